// The version of the library itself, for comparison with the header's.
#include "kval.h"

#define KVAL_TEXT_OF(number) #number
#define KVAL_VERSION_TEXT(major, minor, patch) KVAL_TEXT_OF(major) "." KVAL_TEXT_OF(minor) "." KVAL_TEXT_OF(patch)

const char* kval_version() noexcept {
    return KVAL_VERSION_TEXT(KVAL_VERSION_MAJOR, KVAL_VERSION_MINOR, KVAL_VERSION_PATCH);
}
