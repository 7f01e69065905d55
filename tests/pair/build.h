// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
// One of two builds of the shared library that are loaded side by side: its calls by name. Each has
// its own variables, including the process-wide curve.
#ifndef ZOKECC_TESTS_PAIR_BUILD_H
#define ZOKECC_TESTS_PAIR_BUILD_H

#include <zokecc/zokecc.h>

#include <string>

#include "tests/support/ready_curves.h"

namespace zokecc_test::pair {

// Every call that the tests make.
#define ZOKECC_PAIR_CALLS(call) \
    call(Curve_Init) call(ZOK_OpenSession) call(ZOK_CloseSession) call(SDF_GenerateKeyPair_ECC) \
        call(SDF_ExternalSign_ECC) call(SDF_ExternalVerify_ECC) call(ZOK_ExternalSignHash_ECC) call( \
            ZOK_ExternalVerifyHash_ECC) call(SDF_ExternalEncrytp_ECC) call(SDF_ExternalDecrypt_ECC) \
            call(ZOK_ExternalEncrytp_ECC) call(ZOK_ExternalDecrypt_ECC) call(ZOK_ExternalEcdhKeyAgreement) \
                call(ZOK_SM2_GenerateResponseTmpKeyWithECC) call(ZOK_SM2_GenerateAgreementDataWithECC) \
                    call(ZOK_SM2_GenerateKeyWithECC) call(ZOK_SM2_GenerateResponseWithECC) \
                        call(ZOK_SM2_GenerateAgreementDataAndKeyWithECC) call(ZOK_GenerateKeyWithECC) \
                            call(ZOK_GenerateResponseTmpKeyWithECC) call(ZOK_GenerateAgreementDataWithECC) \
                                call(ZOK_GenerateResponseWithECC) \
                                    call(ZOK_GenerateAgreementDataAndKeyWithECC) call(Ecc_GenPubKey) \
                                        call(Ecc_KeyPair_Gen) call(Ecdsa_DigitalSign) \
                                            call(Ecdsa_DigitalVeriy) call(sm2_DigitalSign) \
                                                call(sm2_DigitalVeriy) call(sm2_Encry) call(sm2_Decry) \
                                                    call(Eces_Encry) call(Eces_Decry) call(Ecdh_KeyExChg) \
                                                        call(sm2_KeyExChg_A1_3) call(sm2_KeyExChg_A4_10) \
                                                            call(sm2_KeyExChg_B1_10) call(sm2_KeyExChg) \
                                                                call(sm2_RPoint)

struct Build {
    // Throws if the file is not a library with all of these calls.
    explicit Build(const std::string &path);

#define ZOKECC_PAIR_MEMBER(name) decltype(&::name) name = nullptr;
    ZOKECC_PAIR_CALLS(ZOKECC_PAIR_MEMBER)
#undef ZOKECC_PAIR_MEMBER
};

// A build with the curve installed, in a session and process-wide.
struct Side {
    Side(const Build &build, const ReadyCurve &curve);
    ~Side();
    Side(const Side &) = delete;
    Side &operator=(const Side &) = delete;

    const Build &calls;
    void *session = nullptr;
};

// A key pair in the records of both generations.
struct Key {
    // Made by a session.
    explicit Key(const Side &maker, uint32_t L);

    ECCrefPrivateKey priv{};
    ECCrefPublicKey pub{};
    mutable uint8_t bytes[32] = {};
    ecc_scalar scalar{bytes, 0};
    ecc_point_bytes point{};
};

}  // namespace zokecc_test::pair

#endif
