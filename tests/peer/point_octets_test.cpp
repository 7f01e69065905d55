// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Octet strings of points, compared with OpenSSL's encoder and decoder on its own copies of the curves.
#include <zokecc/ecc.h>

#include "tests/peer/scheme_peer.h"

namespace zokecc_test::point_octets_test {

namespace {

using Group = PeerOwned<EC_GROUP, EC_GROUP_free>;
using Point = PeerOwned<EC_POINT, EC_POINT_free>;

const PeerCurve kOctetCurves[] = {
    {"secp192r1", "P-192", NID_X9_62_prime192v1},
    {"secp224r1", "P-224", NID_secp224r1},
    {"secp256r1", "P-256", NID_X9_62_prime256v1},
    {"secp256k1", "secp256k1", NID_secp256k1},
    {"brainpoolP192r1", "brainpoolP192r1", NID_brainpoolP192r1},
    {"brainpoolP224r1", "brainpoolP224r1", NID_brainpoolP224r1},
    {"brainpoolP256r1", "brainpoolP256r1", NID_brainpoolP256r1},
    kPeerSm2,
};

struct Form {
    uint32_t ours;
    point_conversion_form_t theirs;
};
const Form kForms[] = {
    {0, POINT_CONVERSION_UNCOMPRESSED}, {1, POINT_CONVERSION_COMPRESSED}, {2, POINT_CONVERSION_HYBRID}};

ByteString peer_octets(const Group &group, const Point &point, point_conversion_form_t form) {
    ByteString out(200);
    out.resize(EC_POINT_point2oct(group.get(), point.get(), form, out.data(), out.size(), nullptr));
    return out;
}

bool peer_reads(const Group &group, const ByteString &octets) {
    const Point point(EC_POINT_new(group.get()));
    return EC_POINT_oct2point(group.get(), point.get(), octets.data(), octets.size(), nullptr) == 1;
}

int32_t read(const ByteString &octets, ecc_point_bytes &out) {
    return ecc_ByteToPoint(octets.data(), static_cast<uint32_t>(octets.size()), &out);
}

}  // namespace

TEST(PeerPointOctets, BothSidesWriteAndReadTheSameInEveryForm) {
    PeerDraws draws;
    for (const PeerCurve &on : kOctetCurves) {
        install(on.name);
        const Group group(EC_GROUP_new_by_curve_name(on.peer_id));
        // A root modulo the prime of secp224r1 takes long.
        const int rounds = on.peer_id == NID_secp224r1 ? 3 : 20;
        for (int round = 0; round < rounds; ++round) {
            const PeerKeyPair keys(on, draws);
            SCOPED_TRACE(std::string(on.name) + " seed " + std::to_string(kPeerSeed) + " d " +
                         to_hex(keys.d));
            const Point point(EC_POINT_new(group.get()));
            const ByteString whole = joined({{0x04}, keys.x, keys.y});
            ASSERT_EQ(EC_POINT_oct2point(group.get(), point.get(), whole.data(), whole.size(), nullptr), 1);
            PointBytes ours = keys.point();
            for (const Form &form : kForms) {
                const ByteString theirs = peer_octets(group, point, form.theirs);
                GuardedBuffer out(theirs.size());
                EXPECT_EQ(
                    ecc_PointToByte(ours.get(), form.ours, out.data(), static_cast<int32_t>(theirs.size())),
                    static_cast<int32_t>(theirs.size()));
                EXPECT_EQ(to_hex(out.all()), to_hex(theirs));
                EXPECT_TRUE(out.untouched_from(theirs.size()));

                GuardedRecord<ecc_point_bytes> back;
                EXPECT_EQ(read(theirs, *back.get()), 0);
                expect_record(back, keys.x, keys.y);
            }
        }
    }
    uninstall();
}

TEST(PeerPointOctets, BothSidesRefuseTheSameCompressedNumbers) {
    PeerDraws draws;
    for (const PeerCurve &on : kOctetCurves) {
        install(on.name);
        const Group group(EC_GROUP_new_by_curve_name(on.peer_id));
        const int rounds = on.peer_id == NID_secp224r1 ? 4 : 40;
        for (int round = 0; round < rounds; ++round) {
            ByteString octets = joined({{static_cast<uint8_t>(2 + round % 2)}, draws.bytes(on.L())});
            octets[1] = 0;  // below every prime here
            ecc_point_bytes out{};
            EXPECT_EQ(read(octets, out) == 0, peer_reads(group, octets))
                << on.name << " seed " << kPeerSeed << " " << to_hex(octets);
        }
    }
    uninstall();
}

TEST(PeerPointOctets, BothSidesRefuseChangedPoints) {
    PeerDraws draws;
    for (const PeerCurve &on : kOctetCurves) {
        install(on.name);
        const Group group(EC_GROUP_new_by_curve_name(on.peer_id));
        const PeerKeyPair keys(on, draws);
        for (size_t bit = 0; bit < 16 * on.L(); bit += 31) {
            ByteString octets = joined({{0x04}, keys.x, keys.y});
            octets[1 + bit / 8] = static_cast<uint8_t>(octets[1 + bit / 8] ^ (1u << (bit % 8)));
            ecc_point_bytes out{};
            EXPECT_EQ(read(octets, out), -1) << on.name << " bit " << bit;
            EXPECT_FALSE(peer_reads(group, octets)) << on.name << " bit " << bit;
        }
    }
    uninstall();
}

TEST(PeerPointOctets, KeptHybridParityIsComparedByThePeerOnly) {
    PeerDraws draws;
    for (const PeerCurve &on : kOctetCurves) {
        install(on.name);
        const Group group(EC_GROUP_new_by_curve_name(on.peer_id));
        const PeerKeyPair keys(on, draws);
        for (uint8_t prefix : {uint8_t{6}, uint8_t{7}}) {
            const ByteString octets = joined({{prefix}, keys.x, keys.y});
            ecc_point_bytes out{};
            EXPECT_EQ(read(octets, out), 0) << on.name;
            EXPECT_EQ(peer_reads(group, octets), (prefix & 1) == (keys.y.back() & 1)) << on.name;
        }
    }
    uninstall();
}

}  // namespace zokecc_test::point_octets_test
