// Point arithmetic on the field of small machines.
#include "ecc/fast_path.h"

#ifndef __SIZEOF_INT128__

namespace zokecc {

ZOKECC_POINT_ARITHMETIC(, SmallField)

}  // namespace zokecc

#endif
