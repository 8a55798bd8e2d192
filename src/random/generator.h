// The generator's numbers, many at a time.
#pragma once

#include "words/word.h"

namespace kval {

/// The low words of the next `count` numbers.
void draw_words(words::Word* out, std::size_t count);

}  // namespace kval
