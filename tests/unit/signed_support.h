// What the tests of signed values share: signed values from raw words, and calls that watch their operands.
#ifndef KVAL_TESTS_SIGNED_SUPPORT_H
#define KVAL_TESTS_SIGNED_SUPPORT_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "kval.h"
#include "unit_support.h"

/// A signed value made as from_words() makes an unsigned one; bits above the width stay.
inline KVAL_SINTEGER signed_words(unsigned width, std::initializer_list<unsigned> value_words,
                                  std::initializer_list<unsigned> mask_words = {}, bool x_flag = false) {
    return KVAL_SINTEGER(from_words(width, value_words, mask_words, x_flag));
}

/// `v` with the flags that these letters name; see marked().
inline KVAL_SINTEGER signed_marked(const KVAL_SINTEGER& v, const std::string& letters) {
    return KVAL_SINTEGER(marked(v, letters));
}

/// `op(l, r)` as printed(), on operands that hold a cached text; both have to come out as they went in, text included,
/// and the result has to come without a text.
template <class Left, class Right, class Operation>
std::string applied(const Left& l, const Right& r, Operation op) {
    Left left(l);
    Right right(r);
    cache_text(left);
    cache_text(right);
    const auto result = op(static_cast<const Left&>(left), static_cast<const Right&>(right));
    EXPECT_EQ(printed(left), printed(l));
    EXPECT_EQ(printed(right), printed(r));
    EXPECT_TRUE(keeps_text(left));
    EXPECT_TRUE(keeps_text(right));
    EXPECT_FALSE(keeps_text(result));
    return printed(result);
}

/// A row of a table: two operands and the result, as printed().
template <class Left, class Right>
struct Case {
    const char* name;
    Left left;
    Right right;
    const char* expected;
};

/// Runs every row of a table.
template <class Left, class Right, class Operation>
void expect_all(std::initializer_list<Case<Left, Right>> rows, Operation op) {
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(applied(row.left, row.right, op), row.expected);
    }
}

#endif
