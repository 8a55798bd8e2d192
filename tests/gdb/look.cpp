// A source that uses the class and makes no value, so that clang++ sees no need to describe the class.
#include <kval.h>

unsigned look(const KVAL_UINTEGER& value) { return value.uint(); }
