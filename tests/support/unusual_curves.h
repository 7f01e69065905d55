// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Curves whose p and n do not fill their words, or have different numbers of words.
#ifndef ZOKECC_TESTS_SUPPORT_UNUSUAL_CURVES_H
#define ZOKECC_TESTS_SUPPORT_UNUSUAL_CURVES_H

#include <string>
#include <vector>

#include "tests/support/curves.h"
#include "tests/support/points.h"

namespace zokecc_test {

// In a longer record than its p needs: with 20 bytes an order of 161 bits would be cut.
inline Curve secp160r1_of_24_bytes() {
    Curve out = curve("secp160r1");
    out.byte_len = 24;
    out.session_type = 2;
    out.legacy_type = 0;
    return out;
}

// Made by complex multiplication, with an order that is prime; named after the bits of p and n.
inline std::vector<Curve> unusual_curves() {
    struct Row {
        const char *name;
        unsigned byte_len;
        const char *p, *a, *b, *n, *Gx, *Gy;
    };
    static const Row rows[] = {
        {"p192n193", 28, "ffffffffffffffffffffffffdcda4a34276e2428a3b4bb17",
         "6bd6795d611af59e575846bd58c7a0e5de7882ca94e81524",
         "d7acf2bac235eb3caeb08d7ab18f41cbbcf1059529d02a48",
         "1000000000000000000000000d7c3741aacab2445de4136ed",
         "2aaa80e6717c488395a6d38ba1e48cb4424a168cae890397",
         "6d4bfc5ab5d2d4079f99dee939a91eae5b6f1d4a0fa5e4e1"},
        {"p224n225", 32, "ffffffffffffffffffffffffffff25cd977dd5b97619dbede0cc5b0d",
         "e856f8dde7a9e1cbdf19a9155dbcfa65cc8b2b074b3d9b3b448de6f9",
         "9ae4a5e9451bebdd3f6670b8e928a6ee885cc75a32291227830944a6",
         "1000000000000000000000000000029823b0281ee7e0893135dc22613",
         "5d6724ad71333fd70a8ced2051bf1c17d6983877f708ece666f27953",
         "396f6e60ddb65b73c6114a8d08c17ff8a96807375a582b65e2644766"},
        {"p161n160", 24, "10000000000000000000001cdfdfa03a0afb72faf",
         "3ff845eb496123faea904ba6cef2832b5cb016dd", "d5502e9cdb9617fc9c6033a3334859dd5d9a2f08",
         "fffffffffffffffffffe43b69781c48c069c0ddf", "e0f2a459a14e8796a5614330fa82d5009b520560",
         "25d28ec95a95ed3bfffaa6715ffe8bb13f5642dc"},
        {"p129n129", 24, "10000000000000003541c0aaf7c184c0d", "253e8f5e8a9253d4c74361d1d80d7033",
         "6e29b4e9b1b6e28ef63644c664110ed1", "10000000000000004bcffb34fcea18669",
         "890435283da1d5a8137c170e4e35f26e", "47c92b5e67a278aa66f1a891218243"},
        {"p141n141", 24, "18f8748e0e49065189f99f849a576d0f38cf", "1343a103d0431917e768d740b7e268454c92",
         "152a9231e4efbd8072ee6f5758b414889b51", "18f8748e0e4906518a90f37c8525a52c9079",
         "18ddde6f9e2c22696bb798b4a6d1c02d79f1", "ec280b173854a9a450292d5c4c09b7005a9"},
        {"p161n161", 24, "1000000000000000000028511a37783845161d6f1",
         "44bf7420d682f6f979fd6a6aa1ae62de0420bf98", "d87fa2c08f01f9fba6aa9fa82e1944418e570f06",
         "100000000000000000000b79553dc75616b9ac463", "8f3661c75676eb41823c55249b6e659f5906c913",
         "267a2dffcfaf794a0b999e3cb8cc0bc1dbf3992a"},
        {"p194n194", 28, "296c46d7fe36f1f6531b4a1c81441c36d551b96ceacb346c5",
         "26258690cf5f1670e2fd2b69387e497081f158f366ead7510",
         "250df123bfc1cd4468487682cae7032e66268e203af562f29",
         "296c46d7fe36f1f6531b4a1c4dcda6c974655ebc428150f3b",
         "1de458a0b84cea33285c8bb200b8455df30f85644d9411709",
         "1053044a584bcab5b8f6b894197d232ba1890a5db8799c7e6"},
        {"p226n226", 32, "343d4b7fdae04b92b8fc98a941d8a5c16f991db5b063851d9f83b80d1",
         "1e498547d05a6dcbf068b09b8a031724e6567e3e9d6629358e3456147",
         "2c73fafec9c3001b7f1982f460f2d82c9b14a428378446f29a1a6b3f",
         "343d4b7fdae04b92b8fc98a941d8d573d2f525f477df5ca5ad64569ef",
         "172153982158633054375eed21851af190337a3716e078dcd1821b5e0",
         "1fb76c7c51011dfdd33475775a6ed65ea7ec6837e965fae4a3ae963dd"},
    };
    std::vector<Curve> out = {secp160r1_of_24_bytes()};
    for (const Row &row : rows) {
        Curve made{};
        made.name = row.name;
        made.byte_len = row.byte_len;
        made.session_type = row.byte_len / 4 - 4;
        made.legacy_type = row.byte_len == 24   ? 0u
                           : row.byte_len == 28 ? 4u
                           : row.byte_len == 32 ? 1u
                                                : kNoType;
        made.p = mint_from_hex(row.p);
        made.a = mint_from_hex(row.a);
        made.b = mint_from_hex(row.b);
        made.n = mint_from_hex(row.n);
        made.G = affine(mint_from_hex(row.Gx), mint_from_hex(row.Gy));
        out.push_back(made);
    }
    return out;
}

}  // namespace zokecc_test

#endif
