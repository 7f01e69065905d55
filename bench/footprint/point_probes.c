/* Copyright 2026 the zokecc developers. SPDX-License-Identifier: Apache-2.0 */
/* Points, with p among the arguments. */
#include "probe.h"

#define CURVE_ARGUMENTS &in.a, &in.b, &in.p

#define POINT_CALLS(CALL) \
    CALL("single points", ecc_affine_jacobin, (&in.out_jacobian, &in.G)) \
    CALL("single points", ecc_jacobin_affine, (&in.out_point, &in.p, &in.jacobian)) \
    CALL("single points", ecc_point_add, (&in.G, &in.Q, CURVE_ARGUMENTS, &in.out_point)) \
    CALL("single points", ecc_point_double, (&in.G, CURVE_ARGUMENTS, &in.out_point)) \
    CALL("single points", ecc_infinite_point, (&in.out_jacobian)) \
    CALL("single points", ecc_copy_point, (&in.out_jacobian, &in.jacobian)) \
    CALL("single points", ecc_invert_point, (&in.p, &in.out_jacobian)) \
    CALL("single points", ecc_jac_point_double, (&in.jacobian, CURVE_ARGUMENTS, &in.out_jacobian)) \
    CALL("single points", ecc_jac_point_add, (&in.jacobian, &in.G, CURVE_ARGUMENTS, &in.out_jacobian)) \
    CALL("single points", ecc_jac_point_add_1, \
         (&in.jacobian, &in.jacobian_2, CURVE_ARGUMENTS, &in.out_jacobian)) \
    CALL("single points", ecc_test_point, (&in.G, CURVE_ARGUMENTS)) \
    CALL("points as byte strings", ecc_point_unpress, (&in.out, &in.G.x, CURVE_ARGUMENTS, 1)) \
    CALL("a table of multiples", ecc_precomputation_point_1, (&in.G, CURVE_ARGUMENTS, in.out_table)) \
    CALL("multiplying by the table", ecc_fix_point_mul_1, \
         (&in.k, &in.G, CURVE_ARGUMENTS, &in.out_point, in.table)) \
    CALL("multiplying any point", ecc_unknown_point_mul, (&in.k, &in.G, CURVE_ARGUMENTS, &in.out_point))

POINT_CALLS(PROBE_FUNCTION)

const probe point_probes[] = {POINT_CALLS(PROBE_ROW){NULL, NULL, NULL}};
