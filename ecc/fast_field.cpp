// The field of small machines.
#include "ecc/fast_path.h"

#ifndef __SIZEOF_INT128__

namespace zokecc {

template class FastField<AnyShortLimbs>;

}  // namespace zokecc

#endif
