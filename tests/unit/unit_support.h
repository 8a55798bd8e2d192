// What the unit tests share: values made from raw words, and everything about a value as words and as text.
#ifndef KVAL_TESTS_UNIT_SUPPORT_H
#define KVAL_TESTS_UNIT_SUPPORT_H

#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

#include "kval.h"

/// A value of `width` bits with these words, the least significant first; missing words are 0. The stores are raw, so
/// bits above the width stay. `x_flag` sets flag X, whatever the x-mask holds.
inline KVAL_UINTEGER from_words(unsigned width, std::initializer_list<unsigned> value_words,
                                std::initializer_list<unsigned> mask_words = {}, bool x_flag = false) {
    KVAL_UINTEGER v(0, width);
    if (x_flag) {
        v.force_x();
        for (int i = 0; i < v.get_size(); ++i) {
            v.set_xmask_at(i, 0);
        }
    }
    int index = 0;
    for (const unsigned word : value_words) {
        v.set_uvalue_at(index++, word);
    }
    index = 0;
    for (const unsigned word : mask_words) {
        v.set_xmask_at(index++, word);
    }
    return v;
}

/// `v` with the flags that these letters name: Z, L (weak low), H (weak high).
inline KVAL_UINTEGER marked(KVAL_UINTEGER v, const std::string& letters) {
    for (const char letter : letters) {
        letter == 'Z' ? v.force_z() : letter == 'L' ? v.force_wl() : v.force_wh();
    }
    return v;
}

/// All value words, the least significant first.
inline std::vector<unsigned> value_words(const KVAL_UINTEGER& v) {
    std::vector<unsigned> words;
    for (int i = 0; i < v.get_size(); ++i) {
        words.push_back(v.get_uvalue_at(i));
    }
    return words;
}

/// All words of the x-mask, the least significant first.
inline std::vector<unsigned> mask_words(const KVAL_UINTEGER& v) {
    std::vector<unsigned> words;
    for (int i = 0; i < v.get_size(); ++i) {
        words.push_back(v.get_xmask_at(i));
    }
    return words;
}

/// The flags that are set, as letters in the order X, Z, L (weak low), H (weak high).
inline std::string flags(const KVAL_UINTEGER& v) {
    std::string letters;
    letters += v.is_x() ? "X" : "";
    letters += v.is_z() ? "Z" : "";
    letters += v.is_wl() ? "L" : "";
    letters += v.is_wh() ? "H" : "";
    return letters;
}

/// Everything but the cached text, without touching it, for exact comparison: "40 bits 00000012 3456789A" with the most
/// significant word first, then " x 00000000 00000001" when the x-mask is not 0 and " flags XZ" when a flag is set.
inline std::string printed(const KVAL_UINTEGER& v) {
    const auto digits = [](const std::vector<unsigned>& words) {
        std::string text;
        for (auto word = words.rbegin(); word != words.rend(); ++word) {
            char buffer[10];
            std::snprintf(buffer, sizeof buffer, " %08X", *word);
            text += buffer;
        }
        return text;
    };
    std::string text = std::to_string(v.bitwidth()) + " bits" + digits(value_words(v));
    for (const unsigned word : mask_words(v)) {
        if (word != 0) {
            text += " x" + digits(mask_words(v));
            break;
        }
    }
    return flags(v).empty() ? text : text + " flags " + flags(v);
}

/// Caches a text in `v` that no printing would give, a dash for every bit, and leaves everything else as it was, bits
/// above the width included. Whether an operation keeps or drops the text shows in keeps_text() afterwards.
inline void cache_text(KVAL_UINTEGER& v) {
    const std::vector<unsigned> values = value_words(v);
    const std::vector<unsigned> masks = mask_words(v);
    v.set_value_from_bin_string(std::string(v.bitwidth(), '-').c_str());
    for (int i = 0; i < v.get_size(); ++i) {
        v.set_uvalue_at(i, values[static_cast<std::size_t>(i)]);
        v.set_xmask_at(i, masks[static_cast<std::size_t>(i)]);
    }
}

/// Whether the text of cache_text() is still there; asks for the binary text, so the answer is good once.
inline bool keeps_text(const KVAL_UINTEGER& v) { return v.as_bin_string()[0] == '-'; }

/// How GoogleTest shows a value.
inline void PrintTo(const KVAL_UINTEGER& v, std::ostream* os) { *os << printed(v); }

#endif
