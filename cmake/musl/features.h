/* The C++ headers of a compiler for glibc ask for its version without asking whether it is there. */
#include_next <features.h>

#ifndef __GLIBC_PREREQ
#define __GLIBC_PREREQ(major, minor) 0
#endif
