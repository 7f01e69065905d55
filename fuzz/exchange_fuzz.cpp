// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Key exchange and ECDH with any points and scalars: both generations and the calls within
// them give the same keys and confirmation values, and two honest sides agree.
#include "fuzz/both_curves.h"

using namespace zokecc_fuzz;

namespace {

struct Side {
    ByteString d, r;
    Coordinates R, peerP, peerR;
};

struct Context {
    const Curve &c;
    uint32_t selector;
    ByteString ZA, ZB;
    size_t klen;
};

// The result of a call: 0 if it succeeded, the key, and the values with 02 and 03.
struct Result {
    uint32_t status;
    ByteString key, with02, with03;
    bool operator==(const Result &) const = default;
};

struct Areas {
    explicit Areas(size_t klen) : key(klen) {}
    GuardedBuffer key, with02{32}, with03{32};
    Result result(uint32_t status) const {
        check(key.untouched_from(key.size()) && with02.untouched_from(32) && with03.untouched_from(32),
              "nothing outside the outputs");
        check(status == 0 || (key.untouched() && with02.untouched() && with03.untouched()),
              "a failed call writes nothing");
        return {status, key.all(), with02.all(), with03.all()};
    }
};

struct Scalar {
    explicit Scalar(const ByteString &from) : bytes(from), record{bytes.data(), length_of(bytes)} {}
    ByteString bytes;
    ecc_scalar record;
};

Result legacy_initiator(const Context &x, const Side &side) {
    const Scalar d(side.d), r(side.r);
    const ecc_point_bytes R = point_record(side.R), P = point_record(side.peerP),
                          peer = point_record(side.peerR);
    Areas out(x.klen);
    const int32_t status = sm2_KeyExChg_A4_10(&r.record, &R, &d.record, &P, &peer, x.ZA.data(), x.ZB.data(),
                                              static_cast<int32_t>(x.klen), out.with02.data(),
                                              out.with03.data(), out.key.data(), x.selector);
    return out.result(static_cast<uint32_t>(status));
}

// With r as the drawn number.
Result legacy_responder(const Context &x, const Side &side) {
    const Scalar d(side.d);
    const ecc_point_bytes P = point_record(side.peerP), peer = point_record(side.peerR);
    ecc_point_bytes R{};
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(number_of(side.r));
    Areas out(x.klen);
    const int32_t status =
        sm2_KeyExChg_B1_10(&d.record, &P, &peer, x.ZA.data(), x.ZB.data(), static_cast<int32_t>(x.klen), &R,
                           out.with03.data(), out.with02.data(), out.key.data(), x.selector);
    return out.result(static_cast<uint32_t>(status));
}

// Only the key: this call's confirmation values differ from the others'.
Result legacy_whole(const Context &x, const Side &side, bool initiator) {
    const Scalar d(side.d), r(side.r);
    const ecc_point_bytes R = point_record(side.R), P = point_record(side.peerP),
                          peer = point_record(side.peerR);
    Areas out(x.klen);
    const int32_t status = sm2_KeyExChg(initiator ? 1 : 0, &r.record, &R, &peer, &d.record, &P, x.ZA.data(),
                                        x.ZB.data(), static_cast<int32_t>(x.klen), out.with03.data(),
                                        out.with02.data(), out.key.data(), x.selector);
    return out.result(static_cast<uint32_t>(status));
}

enum class Call { kInitiate, kRespond, kRespondAtOnce };

Result session_call(const Context &x, const Side &side, Call call) {
    const ECCrefPrivateKey d = private_record(side.d), r = private_record(side.r);
    const ECCrefPublicKey P = public_record(side.peerP), peer = public_record(side.peerR);
    ECCrefPublicKey R = public_record(side.R);
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(number_of(side.r));
    GuardedRecord<KeyAgreementResult> made;
    Areas out(x.klen);
    made->key = out.key.data();
    void *session = session_of(x.c, x.selector);
    const uint32_t bits = static_cast<uint32_t>(8 * x.klen), za = length_of(x.ZA), zb = length_of(x.ZB);
    const uint8_t *ZA = x.ZA.data(), *ZB = x.ZB.data();
    uint32_t status = 0;
    if (call == Call::kInitiate)
        status = ZOK_GenerateKeyWithECC(session, bits, ZA, za, ZB, zb, &d, &r, &P, &peer, made.get());
    else if (call == Call::kRespond)
        status =
            ZOK_GenerateResponseWithECC(session, bits, ZA, za, ZB, zb, &d, &P, &peer, &r, &R, made.get());
    else
        status = ZOK_GenerateAgreementDataAndKeyWithECC(session, bits, ZA, za, ZB, zb, &d, &P, &peer, &R,
                                                        made.get());
    const bool first = call == Call::kInitiate;
    std::copy_n(first ? made->check : made->send, 32, out.with02.data());
    std::copy_n(first ? made->send : made->check, 32, out.with03.data());
    check(made.guards_intact() && all_zero(ByteString(1, static_cast<uint8_t>(made->check[32] ^ 0xA5))),
          "32 bytes of each slot");
    return out.result(status);
}

bool has_zero_coordinate(const Coordinates &P) { return all_zero(P.x) || all_zero(P.y); }

// The older calls also refuse zero coordinates of the peer's key, and of the initiator's own R.
void check_same(const Result &legacy, const Result &session, bool zero_refused) {
    if (zero_refused) {
        check(legacy.status != 0, "zero coordinates are refused");
        return;
    }
    check((legacy.status == 0) == (session.status == 0), "both generations succeed or fail");
    if (legacy.status == 0) check(legacy == session, "and their results are equal");
}

void check_generations(const Context &x, const Side &side) {
    const bool zero_key = has_zero_coordinate(side.peerP);
    check_same(legacy_initiator(x, side), session_call(x, side, Call::kInitiate),
               zero_key || has_zero_coordinate(side.R));
    const Result at_once = session_call(x, side, Call::kRespondAtOnce);
    check_same(legacy_responder(x, side), at_once, zero_key);
    const Result split = session_call(x, side, Call::kRespond);
    check(split == at_once, "the responder in one call and in two");
    const Result initiator = legacy_initiator(x, side), whole = legacy_whole(x, side, true);
    if (whole.status == 0)
        check(initiator.status == 0 && initiator.key == whole.key, "the call for both roles");
}

// Two honest sides on a curve where no multiple is lost.
void check_agreement(FuzzInput &input, const Context &x) {
    const Curve &c = x.c;
    auto scalar = [&] { return fixed_bytes(input.reduced(c.n), c.byte_len); };
    const ByteString dA = scalar(), rA = scalar(), dB = scalar(), rB = scalar();
    const Coordinates PA = multiple_of_G(c, number_of(dA)), RA = multiple_of_G(c, number_of(rA));
    const Coordinates PB = multiple_of_G(c, number_of(dB)), RB = multiple_of_G(c, number_of(rB));
    const Side A{dA, rA, RA, PB, RB}, B{dB, rB, RB, PA, RA};
    check_generations(x, A);
    const Result first = session_call(x, A, Call::kInitiate), second = session_call(x, B, Call::kRespond);
    // The public key of d = 0 is a record of zero bytes, not a point on the curve.
    const bool honest = !all_zero(dA) && !all_zero(dB);
    if (honest && first.status == 0 && second.status == 0 && !is_small(c))
        check(first == second, "the sides agree");

    ByteString key_out(c.byte_len), again(c.byte_len);
    const ECCrefPrivateKey d = private_record(dA);
    const ECCrefPublicKey pub = public_record(PB);
    check(ZOK_ExternalEcdhKeyAgreement(session_of(c, 0), &d, &pub, key_out.data()) == ZOK_OK, "ECDH");
    const Scalar legacy_d(dA);
    const ecc_point_bytes peer = point_record(PB);
    check(Ecdh_KeyExChg(&legacy_d.record, &peer, again.data(), c.byte_len) ==
              static_cast<int32_t>(c.byte_len),
          "the older ECDH");
    check_bytes(again, key_out, "the same secret");
    check_bytes(key_out, product(c, dA, PB).x, "the x of the product");
}

// Values Z and keys of any length: refused, or only the key is written.
void check_lengths(FuzzInput &input, const Curve &c) {
    const uint32_t selector = input.below(3);
    const size_t za = input.below(400), zb = input.below(100), klen = input.below(200);
    const Context x{c, selector, input.bytes(za), input.bytes(zb), klen};
    const Side side{scalar_bytes(input, c), fixed_bytes(input.reduced(c.n), c.byte_len),
                    point_bytes(input, c), point_bytes(input, c), point_bytes(input, c)};
    for (Call call : {Call::kInitiate, Call::kRespond, Call::kRespondAtOnce}) {
        const Result got = session_call(x, side, call);
        if (5 * c.byte_len + za + zb > 448)
            check(got.status == ZOK_ERR_ARGUMENT, "too long for a transcript");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    FuzzInput input(data, size);
    const uint32_t what = input.below(3);
    const Curve &c = both_curve(input);
    AllocLedger ledger(24);
    if (what == 2) {
        check_lengths(input, c);
        return 0;
    }
    const uint32_t selector = input.below(3);
    const size_t klen = input.below(120);
    const Context x{c, selector, input.bytes(32), input.bytes(32), klen};
    if (what == 0) {
        check_agreement(input, x);
        return 0;
    }
    const ByteString d = scalar_bytes(input, c), r = fixed_bytes(input.reduced(c.n), c.byte_len);
    const Coordinates R = multiple_of_G(c, number_of(r)), peerP = point_bytes(input, c);
    check_generations(x, {d, r, R, peerP, point_bytes(input, c)});
    return 0;
}
