/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* The cases of selftest: a table per family. */
#ifndef ZOKECC_TOOLS_SELFTEST_H
#define ZOKECC_TOOLS_SELFTEST_H

#include "common.h"
#include "expect.h"

/* A case returns 0 if it passes, otherwise the line that failed. */
typedef struct selftest_case {
    const char *name;
    int (*run)(void);
} selftest_case;

#define REQUIRE(condition) \
    do { \
        forget_difference(); \
        if (!(condition)) return keep_condition(#condition, __LINE__); \
    } while (0)

/* Each table ends with a case without a name. */
extern const selftest_case mint_cases[], hash_cases[], ecc_cases[], signature_cases[], encryption_cases[],
    exchange_cases[], session_cases[], session_encryption_cases[], agreement_cases[];

/* The example of GM/T 0003.5 (GB/T 32918.5), annexes A and C: one key for signing and encryption. */
#define STANDARD_D "3945208f7b2144b13f36e38ac6d39f95889393692860b51a42fb81ef4df7c5b8"
#define STANDARD_PX "09f9df311e5421a150dd7d161e4bc5c672179fad1833fc076bb08ff356f35020"
#define STANDARD_PY "ccea490ce26775a52dc6ea718cc1aa600aed05fbf35e084a6632f6072da9ad13"

/* Annex A: the identity 1234567812345678 signs "message digest". */
#define SIGN_Z "b2e14c5c79c6df5b85f4fe7ed8db7a262b9da7e07ccb0ea9f4747b8ccda8a4f3"
#define SIGN_E "f0b43e94ba45accaace692ed534382eb17e6ab5a19ce7b31f4486fdfc0d28640"
#define SIGN_K "59276e27d506861a16680f3ad9c02dccef3cc1fa3cdbe4ce6d54b80deac1bc21"
#define SIGN_R "f5a03b0648d2c4630eeac513e1bb81a15944da3827d5b74143ac7eaceee720b3"
#define SIGN_S "b1b6aa29df212fd8763182bc0d421ca1bb9038fd1f7f42d4840b69c485bbc1aa"

/* Annex C: "encryption standard" with the same nonce, so C1 = SIGN_K * G. */
#define C1_X "04ebfc718e8d1798620432268e77feb6415e2ede0e073c0f4f640ecd2e149a73"
#define C1_Y "e858f9d81e5430a57b36daab8f950a3c64e6ee6a63094d99283aff767e124df0"
#define C2_C3 \
    "21886ca989ca9c7d58087307ca93092d651efa" \
    "59983c18f809e262923c53aec295d30383b54e39d609d160afcb1908d0bd8766"

/* Annex B: two users with the same identity agree on 128 bits. */
#define EXCHANGE_DA "81eb26e941bb5af16df116495f90695272ae2cd63d6c4ae1678418be48230029"
#define EXCHANGE_PAX "160e12897df4edb61dd812feb96748fbd3ccf4ffe26aa6f6db9540af49c94232"
#define EXCHANGE_PAY "4a7dad08bb9a459531694beb20aa489d6649975e1bfcf8c4741b78b4b223007f"
#define EXCHANGE_DB "785129917d45a9ea5437a59356b82338eaadda6ceb199088f14ae10defa229b5"
#define EXCHANGE_PBX "6ae848c57c53c7b1b5fa99eb2286af078ba64c64591b8b566f7357d576f16dfb"
#define EXCHANGE_PBY "ee489d771621a27b36c5c7992062e9cd09a9264386f3fbea54dff69305621c4d"
#define EXCHANGE_ZA "3b85a57179e11e7e513aa622991f2ca74d1807a0bd4d4b38f90987a17ac245b1"
#define EXCHANGE_ZB "79c988d63229d97ef19fe02ca1056e01e6a7411ed24694aa8f834f4a4ab022f7"
#define EXCHANGE_RA "d4de15474db74d06491c440d305e012400990f3e390c7e87153c12db2ea60bb3"
#define EXCHANGE_RAX "64ced1bdbc99d590049b434d0fd73428cf608a5db8fe5ce07f15026940bae40e"
#define EXCHANGE_RAY "376629c7ab21e7db260922499ddb118f07ce8eaae3e7720afef6a5cc062070c0"
#define EXCHANGE_RB "7e07124814b309489125eaed101113164ebf0f3458c5bd88335c1f9d596243d6"
#define EXCHANGE_RBX "acc27688a6f7b706098bc91ff3ad1bff7dc2802cdb14ccccdb0a90471f9bd707"
#define EXCHANGE_RBY "2fedac0494b2ffc4d6853876c79b8f301c6573ad0aa50f39fc87181e1a1b46fe"
#define EXCHANGE_K "6c89347354de2484c60b4ab1fde4c6e5"
#define EXCHANGE_S02 "d3a0fe15dee185ceae907a6b595cc32a266ed7b3367e9983a896dc32fa20f8eb" /* SB and S1 */
#define EXCHANGE_S03 "18c7894b3816df16cf07b05c5ec0bef5d655d58f779cc1b400a4f3884644db88" /* SA and S2 */

/* RFC 6979 A.2.5: a signature of "sample" with ECDSA on P-256 and SHA-256. */
#define ECDSA_QX "60fed4ba255a9d31c961eb74c6356d68c049b8923b61fa6ce669622e60f29fb6"
#define ECDSA_QY "7903fe1008b8bc99a41ae9e95628bc64f2f1b20c2d7e9f5177a3c294d4462299"
#define ECDSA_D "c9afa9d845ba75166b5c215767b1d6934e50c3db36e89b127b8a622b120f6721"
#define ECDSA_R "efd48b2aacb6a8fd1140dd9cd45e81d69d2c877b56aaf991c34d0ea84eaf3716"
#define ECDSA_S "f7cb1c942d657c41d436c7a1b6e29f65f3e900dbb9aff4064dc4ab2f843acda8"

/* Case 0 of P-256 in NIST's CAVP vectors for the ECC CDH primitive. */
#define ECDH_D "7d7dc5f71eb29ddaf80d6214632eeae03d9058af1fb6d22ed80badb62bc1a534"
#define ECDH_PX "700c48f77f56584c5cc632ca65640db91b6bacce3a4df6b42ce7cc838833d287"
#define ECDH_PY "db71e509e3fd9b060ddb20ba5c51dcc5948d46fbf640dfe0441782cab85fa4ac"
#define ECDH_Z "46fc62106420ff012e54a434fbdd2d25ccc5852060561e68040dd7778997bd7b"

#endif
