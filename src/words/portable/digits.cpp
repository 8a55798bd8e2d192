// The digits of whole words in plain C++, eight characters a step.
#include "words/digits_steps.h"

namespace kval::words {

void write_hexadecimal_words(char* text, const Word* value, const Word* unknown, std::size_t size) {
    for (std::size_t i = size; i-- > 0; text += 8) store_eight(text, hexadecimal_digits(value[i], unknown[i]));
}

void write_binary_words(char* text, const Word* value, const Word* unknown, std::size_t size) {
    for (std::size_t i = size; i-- > 0;) {
        for (unsigned low = kWordBits; low > 0; text += 8) {
            low -= 8;
            store_eight(text, binary_digits(value[i] >> low, unknown[i] >> low));
        }
    }
}

void read_hexadecimal_words(Word* value, Word* unknown, const char* text, std::size_t size) {
    for (std::size_t i = size; i-- > 0; text += 8) {
        value[i] = read_chunk(text);
        unknown[i] = 0;
    }
}

bool read_binary_words(Word* value, Word* unknown, const char* text, std::size_t size) {
    bool some_known = false;
    for (std::size_t i = size; i-- > 0;) {
        BinaryDigits all{0, 0};
        for (int step = 0; step < 4; ++step, text += 8) {
            const BinaryDigits read = read_binary_digits(load_eight(text));
            all = {all.given << 8 | read.given, all.ones << 8 | read.ones};
        }
        some_known |= set_given(value[i], unknown[i], all);
    }
    return some_known;
}

}  // namespace kval::words
