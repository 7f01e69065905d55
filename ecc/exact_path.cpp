// Point arithmetic by definition.
#include "ecc/fast_path.h"

namespace zokecc {

ZOKECC_POINT_ARITHMETIC(, ExactField)

}  // namespace zokecc
