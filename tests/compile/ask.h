// How the questions are put: every line of the output is a question, which is the expression itself, and its answer.
// Values are answered with their width and their hexadecimal digits, signed ones with an s as well.
#pragma once

#include <kval.h>

#include <cstdio>

inline void answer(const char* question, bool yes) { std::printf("%s: %s\n", question, yes ? "yes" : "no"); }
inline void answer(const char* question, unsigned number) { std::printf("%s: %u\n", question, number); }
inline void answer(const char* question, int number) { std::printf("%s: %d\n", question, number); }
inline void answer(const char* question, const char* text) { std::printf("%s: \"%s\"\n", question, text); }
inline void answer(const char* question, const KVAL_UINTEGER& v) {
    std::printf("%s: %u'h%s\n", question, v.bitwidth(), v.as_hex_string());
}
inline void answer(const char* question, const KVAL_SINTEGER& v) {
    std::printf("%s: %u'sh%s\n", question, v.bitwidth(), v.as_hex_string());
}

#define ASK(...) answer(#__VA_ARGS__, __VA_ARGS__)

void ask_about_signed_values();
