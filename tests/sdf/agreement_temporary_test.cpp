// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// The temporary key pair, under its four names.
#include "tests/support/exchange_generations.h"

namespace zokecc_test::agreement_temporary_test {

using namespace exchange;

namespace {

using TemporaryCall = uint32_t (*)(void *, ECCrefPrivateKey *, ECCrefPublicKey *);

constexpr TemporaryCall kNames[] = {ZOK_SM2_GenerateResponseTmpKeyWithECC,
                                    ZOK_SM2_GenerateAgreementDataWithECC, ZOK_GenerateResponseTmpKeyWithECC,
                                    ZOK_GenerateAgreementDataWithECC};

struct Outputs {
    GuardedRecord<ECCrefPrivateKey> priv;
    GuardedRecord<ECCrefPublicKey> pub;
};

// The call with r as the drawn number.
void expect_pair(TemporaryCall call, const Curve &curve, const ByteString &r, const ByteString &x,
                 const ByteString &y) {
    Outputs out;
    FakeEntropy entropy;
    entropy.queued_numbers.push_back(mint_from_hex(to_hex(r)));
    ASSERT_EQ(call(shared_session(curve), out.priv.get(), out.pub.get()), ZOK_OK);
    EXPECT_EQ(entropy.number_calls, 1u);
    EXPECT_EQ(to_hex(out.priv.bytes()), to_hex(image(private_key(r))));
    EXPECT_TRUE(out.priv.guards_intact());
    expect_public_written(out.pub, x, y);
}

}  // namespace

TEST(ZokSm2GenerateResponseTmpKeyWithEcc, EveryNameWritesTheDrawnNumberAndItsMultipleOfG) {
    for (unsigned byte_len : {20u, 24u, 28u, 32u})
        for (TemporaryCall call : kNames)
            for (uint32_t r : {1u, 37u, 990u}) {
                const TinyPoint R = prime_group().multiple(r);
                expect_pair(call, prime_group().curve(byte_len), tiny_bytes(r, byte_len),
                            tiny_bytes(R.x, byte_len), tiny_bytes(R.y, byte_len));
            }
}

TEST(ZokSm2GenerateResponseTmpKeyWithEcc, EveryNameDrawsTheSameFromTheSameStart) {
    const Curve &sm2 = curve("sm2p256v1");
    FakeEntropy first;
    mint r{};
    gen_random_number(&r, &sm2.n);
    const std::vector<char> order = first.call_order;
    std::string public_text;
    for (TemporaryCall call : kNames) {
        Outputs out;
        FakeEntropy entropy;
        ASSERT_EQ(call(shared_session(sm2, 0), out.priv.get(), out.pub.get()), ZOK_OK);
        EXPECT_EQ(to_hex(out.priv.bytes()), to_hex(image(private_key(fixed_bytes(r, 32)))));
        EXPECT_EQ(entropy.call_order, order);
        if (public_text.empty()) public_text = to_hex(out.pub.bytes());
        EXPECT_EQ(to_hex(out.pub.bytes()), public_text);
    }
}

TEST(ZokSm2GenerateResponseTmpKeyWithEcc, DrawnNumberOfTheWorkedExampleGivesItsRandomPoint) {
    const ExchangeCase exchange = vector_case(worked_example("GM/T 0003.5-2012 B.2"));
    for (const ExchangeParty *party : {&exchange.A, &exchange.B})
        expect_pair(ZOK_SM2_GenerateResponseTmpKeyWithECC, exchange.curve, party->r, party->Rx, party->Ry);
}

TEST(ZokSm2GenerateResponseTmpKeyWithEcc, DrawnNumberOfZeroGivesZeroBytes) {
    const ByteString zero(24, 0);
    for (TemporaryCall call : kNames) expect_pair(call, prime_group().curve(24), zero, zero, zero);
}

}  // namespace zokecc_test::agreement_temporary_test
