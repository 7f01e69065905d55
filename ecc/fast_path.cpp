// Point arithmetic on the field of small machines.
#include "ecc/fast_path.h"

#if !defined(__SIZEOF_INT128__) && !defined(ZOKECC_SMALL)

namespace zokecc {

ZOKECC_POINT_ARITHMETIC(, SmallField)

}  // namespace zokecc

#endif
