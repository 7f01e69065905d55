// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// Products with secret scalars on curves whose p and n do not fill their words, or have different numbers of
// words, compared with multiples from plain integers: for each a scalar with the order's highest bit and
// another one.
#include <gtest/gtest.h>

#include "ct/points.h"
#include "tests/support/naive_int.h"
#include "tests/support/unusual_curves.h"

namespace zokecc_test::ct_unusual_curves_test {

namespace {

struct Row {
    const char *curve, *k, *x, *y;
};
const Row kRows[] = {
    {"secp160r1", "100000000000000000000a6dd40b2d002cc92d33d", "24b4a6d6c20ce8d03f1c66aeba8aa14c00d542e4",
     "9f9fd290a5eaa8b89f220a6f7c54a5a7068a9a33"},
    {"secp160r1", "f08db22fd293056a3170fab23d90fbac32833106", "22e18656a01cc0c61bed0b9f58323831c1f65334",
     "ffd426a3a6f834ea2795751552384c3c93aece53"},
    {"p192n193", "10000000000000000000000009c8052e3ffec3fee8ed2305d",
     "ccc80a5e9e2d13821b2396b489ae3e724683c9f783a8e0fe", "b55067717ca5558368c6f12ce8e1e2e9d8f3a09e07554817"},
    {"p192n193", "80289e32a93f32a9a17251028e4edc90253d9e303ce1268c",
     "1cbfa6de38830a96c24e80918993ab1222920044df05649d", "828f0ed0810c217eb7053fa22a7e8dc0060b1e1835c48632"},
    {"p224n225", "1000000000000000000000000000015372ed0d50a63783933d5f00510",
     "2003656ef9e018ff541e57c15240f78eb7b35ce59cd60efe5cb3b0e6",
     "ffde245767cd77b38d5d00aa824540a13eba3a04f00e2210b80d8aab"},
    {"p224n225", "88b224f042a68fecc75a23c48d0d866b165195371e07ea63524ca98f",
     "eb90cc072b5e524ecab7a5b8730a16d243892629e1f1055a295110b0",
     "53e413199c151882d04416491dcdb24276efa9fb1ca0462e7926f331"},
    {"p161n160", "8a5c892b1266ef64311275fc39c0d03234795347", "162b0c878f7b60344e8c894d2211beb8470c4d56",
     "db03b9e27a8901ddd99c420e38949eec81e82817"},
    {"p161n160", "e6b1e07c8f62fcd6b27db193333bd939d86bb32f", "82a0912a391ea853da652c4d2982a9e0c9e6cf9a",
     "a1c55a4b0c1f952bea34f5f4a8d45038bc54d61b"},
    {"p129n129", "10000000000000000138851b089eb3061", "c0690a409e379dc7bd76fcfad8cdd088",
     "7cff027d068db017d4d5c290d090018f"},
    {"p129n129", "d988d7c654313a3bbe3e00fc36480de2", "55215f168403c12b47ebd0d8a1ee3718",
     "807ad4718c917d009cefbbc6a8d97fc7"},
    {"p141n141", "1144d3cdfaf77613b8c093af0473184cf29a", "aac719ae793d33e2e71b35c4a387032d14c",
     "11dcd1dd226bd3b7603c53132e33e9f6958c"},
    {"p141n141", "18dba0879a1471dbadab459ccb821b420c79", "161170f7dc365d3e4a3323a649b09fd2c64d",
     "5ef336f89b7eac57c886f31a235a4015b91"},
    {"p161n161", "100000000000000000000951fc045596e67714350", "e8d99fa0fe5c08cb00a873d88c9a516cad7cf3ec",
     "364eea285c879301c0e193623aa58b7c2632933f"},
    {"p161n161", "8fc1db7fc1de21ff27e776103465de3626351bb", "35f63230bdc9db54d57204dcb3297645b72c3e38",
     "2b4956753a334ec8783a507f8c0ced04bfb881ee"},
    {"p194n194", "2810717e7fc520fde418bccad1e2e8b1b6ecc5cb6fd42cbf8",
     "c52ebf0ceb8ab297d373ff59854931449770964d8e35a2d3", "1ec87f19beca2ab07cadc325013942b35dbe7b41b3742c0fb"},
    {"p194n194", "1a6911f050e5323887d26e283b032b1e19014f0eee7b5d71c",
     "6def6ae9acf961824bda62818a91c0d55d661b89e7be0e24", "1cab5c01fc39137428a599cb3f443e1ac6aeb85e608297b9f"},
    {"p226n226", "287fb1a354c59220925bca5d7185e791fa78e885cb123fc33d295ae69",
     "13be7d75ee7ca45f3b37cada33c047ce7c8361e421616fc6ce9994463",
     "5b0d7342693654d008bdca67f84cad2f837e38d319ea5499c2d699cb"},
    {"p226n226", "3257cc4657b3e8e58cb4b233b0fec3971002e970a93596ea46a5cc84a",
     "1a860e4e36829d966db55718e621d405babcee6d4638e81b57c45e6d8",
     "19aa91311b41a0bf7892b8c367dacfaa51f762375fdf424217532ca1b"},
};

mint wide(const Natural &value, const mint &n) {
    mint out{};
    for (size_t i = 0; i < n.len; ++i) out.words[i] = value.word(i);
    out.len = n.len;
    return out;
}

void expect_multiples(const Curve &c, const Natural &k, const ecc_point &wanted) {
    const Session session(c);
    const zokecc::CurveView view = zokecc::view_of(*session.context());
    ASSERT_TRUE(zokecc::has_secret_points(view));
    EXPECT_TRUE(zokecc::is_valid_point(view, wanted));
    const mint scalar = wide(k, c.n);
    ecc_point of_base{}, of_any{};
    EXPECT_TRUE(zokecc::multiply_base_in_secret(view, scalar, of_base));
    EXPECT_TRUE(zokecc::multiply_in_secret(view, scalar, Natural(c.n).bit_length(), c.G, nullptr, of_any));
    for (ecc_point *point : {&of_base, &of_any}) {
        zokecc::publish_point(*point, *point);
        EXPECT_TRUE(same_point(wanted, *point)) << k.to_hex();
    }
}

}  // namespace

TEST(UnusualCurves, MultiplesAreThoseOfPlainIntegers) {
    for (const Curve &c : unusual_curves())
        for (const Row &row : kRows) {
            if (c.name != row.curve) continue;
            SCOPED_TRACE(c.name);
            const Natural n(c.n), k = Natural::from_hex(row.k), y = Natural::from_hex(row.y);
            const mint x = mint_from_hex(row.x);
            expect_multiples(c, k, affine(x, y.to_mint()));
            expect_multiples(c, n - k, affine(x, (Natural(c.p) - y).to_mint()));
        }
}

// No curve has an order with more words than p + 1.
TEST(UnusualCurves, OrderFarAbovePIsRefused) {
    Curve c = secp160r1_of_24_bytes();
    c.n.words[5] = 3;
    const Session session(c);
    EXPECT_FALSE(zokecc::has_secret_points(zokecc::view_of(*session.context())));
}

}  // namespace zokecc_test::ct_unusual_curves_test
