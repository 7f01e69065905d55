// Linkage of functions and objects that several folders share under a plain C name but that
// do not leave the shared library.
#ifndef ZOKECC_MINT_LINKAGE_H
#define ZOKECC_MINT_LINKAGE_H

#define ZOKECC_INTERNAL extern "C" __attribute__((visibility("hidden")))

#endif
