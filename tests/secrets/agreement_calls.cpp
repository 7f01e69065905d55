// Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0
#include "tests/secrets/calls.h"
#include "tests/secrets/scene.h"

namespace zokecc_test::secrets {

namespace {

const uint8_t ZA[32] = {1, 2, 3}, ZB[32] = {4, 5, 6};
const uint8_t identity[] = "1234567812345678";
constexpr uint32_t kIdentityBytes = 16, kKeyBits = 8 * kKeyBytes;

Scene &s = scene;

using MakeTemporary = uint32_t(void *, ECCrefPrivateKey *, ECCrefPublicKey *);

template <MakeTemporary make>
uint32_t make_temporary() {
    return make(s.session, &s.hidden.private_record, &s.out.public_record);
}

uint32_t initiate_with_Z(const Party &own, const Party &peer_temporary) {
    return ZOK_GenerateKeyWithECC(s.session, kKeyBits, ZA, 32, ZB, 32, &own.private_record,
                                  &s.own_temporary.private_record, &s.peer.public_record,
                                  &peer_temporary.public_record, &s.hidden.agreement);
}

uint32_t respond_with_Z(const Party &own) {
    s.out.public_record = s.own_temporary.public_record;
    return ZOK_GenerateResponseWithECC(s.session, kKeyBits, ZA, 32, ZB, 32, &own.private_record,
                                       &s.peer.public_record, &s.peer_temporary.public_record,
                                       &s.own_temporary.private_record, &s.out.public_record,
                                       &s.hidden.agreement);
}

uint32_t respond_at_once_with_Z(const Party &own) {
    return ZOK_GenerateAgreementDataAndKeyWithECC(s.session, kKeyBits, ZA, 32, ZB, 32, &own.private_record,
                                                  &s.peer.public_record, &s.peer_temporary.public_record,
                                                  &s.out.public_record, &s.hidden.agreement);
}

uint32_t initiate_with_identities(const Party &own, const Party &peer_temporary) {
    return ZOK_SM2_GenerateKeyWithECC(s.session, kKeyBits, identity, kIdentityBytes, identity, kIdentityBytes,
                                      &own.private_record, &s.own_temporary.private_record,
                                      &s.own_temporary.public_record, &s.peer.public_record,
                                      &peer_temporary.public_record, &s.hidden.agreement);
}

uint32_t respond_with_identities(const Party &own) {
    s.out.public_record = s.own_temporary.public_record;
    return ZOK_SM2_GenerateResponseWithECC(s.session, kKeyBits, identity, kIdentityBytes, identity,
                                           kIdentityBytes, &own.private_record, &s.peer.public_record,
                                           &s.peer_temporary.public_record, &s.own_temporary.private_record,
                                           &s.out.public_record, &s.hidden.agreement);
}

uint32_t respond_at_once_with_identities(const Party &own) {
    return ZOK_SM2_GenerateAgreementDataAndKeyWithECC(
        s.session, kKeyBits, identity, kIdentityBytes, identity, kIdentityBytes, &own.private_record,
        &s.peer.public_record, &s.peer_temporary.public_record, &s.out.public_record, &s.hidden.agreement);
}

}  // namespace

std::vector<Call> agreement_calls() {
    static const Party nowhere{};  // (0, 0), not on any of the curves
    return {
        {"ZOK_SM2_GenerateResponseTmpKeyWithECC", make_temporary<ZOK_SM2_GenerateResponseTmpKeyWithECC>,
         ZOK_OK},
        {"ZOK_SM2_GenerateAgreementDataWithECC", make_temporary<ZOK_SM2_GenerateAgreementDataWithECC>,
         ZOK_OK},
        {"ZOK_GenerateResponseTmpKeyWithECC", make_temporary<ZOK_GenerateResponseTmpKeyWithECC>, ZOK_OK},
        {"ZOK_GenerateAgreementDataWithECC", make_temporary<ZOK_GenerateAgreementDataWithECC>, ZOK_OK},
        {"ZOK_GenerateKeyWithECC", [] { return initiate_with_Z(s.own, s.peer_temporary); }, ZOK_OK},
        {"ZOK_GenerateKeyWithECC, key above n", [] { return initiate_with_Z(s.above, s.peer_temporary); },
         ZOK_ERR_ARGUMENT},
        {"ZOK_GenerateKeyWithECC, point off the curve", [] { return initiate_with_Z(s.own, nowhere); },
         ZOK_ERR_INTERNAL},
        {"ZOK_GenerateResponseWithECC", [] { return respond_with_Z(s.own); }, ZOK_OK},
        {"ZOK_GenerateResponseWithECC, key above n", [] { return respond_with_Z(s.above); },
         ZOK_ERR_ARGUMENT},
        {"ZOK_GenerateAgreementDataAndKeyWithECC", [] { return respond_at_once_with_Z(s.own); }, ZOK_OK},
        {"ZOK_SM2_GenerateKeyWithECC", [] { return initiate_with_identities(s.own, s.peer_temporary); },
         ZOK_OK},
        {"ZOK_SM2_GenerateKeyWithECC, key above n",
         [] { return initiate_with_identities(s.above, s.peer_temporary); }, ZOK_ERR_ARGUMENT},
        {"ZOK_SM2_GenerateKeyWithECC, point off the curve",
         [] { return initiate_with_identities(s.own, nowhere); }, ZOK_ERR_INTERNAL},
        {"ZOK_SM2_GenerateResponseWithECC", [] { return respond_with_identities(s.own); }, ZOK_OK},
        {"ZOK_SM2_GenerateAgreementDataAndKeyWithECC", [] { return respond_at_once_with_identities(s.own); },
         ZOK_OK},
    };
}

}  // namespace zokecc_test::secrets
