// Checks of an operator on a row of operands: the result, and all that the operator must leave alone.
#pragma once

#include <gtest/gtest.h>

#include "kval.h"
#include "unit_support.h"

// Operands, and the result as printed() gives it.
struct BinaryRow {
    const char* name;
    KVAL_UINTEGER left;
    KVAL_UINTEGER right;
    const char* want;
};

struct NumberRow {
    const char* name;
    KVAL_UINTEGER value;
    unsigned number;
    const char* want;
};

// Changes every word and some flags, as a probe for anything shared.
inline void overwrite(KVAL_UINTEGER& v) {
    for (int i = 0; i < v.get_size(); ++i) {
        v.set_uvalue_at(i, ~v.get_uvalue_at(i)).set_xmask_at(i, ~v.get_xmask_at(i));
    }
    v.force_z().force_wh();
}

// The result has no text and shares nothing with the operands, which stay as they are, text included.
inline void check_free(const BinaryRow& row, KVAL_UINTEGER (*operation)(const KVAL_UINTEGER&, const KVAL_UINTEGER&)) {
    SCOPED_TRACE(row.name);
    KVAL_UINTEGER left(row.left), right(row.right);
    cache_text(left);
    cache_text(right);
    KVAL_UINTEGER result = operation(left, right);
    EXPECT_EQ(printed(result), row.want);
    EXPECT_FALSE(keeps_text(result));
    overwrite(result);
    EXPECT_EQ(printed(left), printed(row.left));
    EXPECT_EQ(printed(right), printed(row.right));
    EXPECT_TRUE(keeps_text(left));
    EXPECT_TRUE(keeps_text(right));
}

inline void check_free(const NumberRow& row, KVAL_UINTEGER (*operation)(const KVAL_UINTEGER&, unsigned)) {
    SCOPED_TRACE(row.name);
    KVAL_UINTEGER operand(row.value);
    cache_text(operand);
    KVAL_UINTEGER result = operation(operand, row.number);
    EXPECT_EQ(printed(result), row.want);
    EXPECT_FALSE(keeps_text(result));
    overwrite(result);
    EXPECT_EQ(printed(operand), printed(row.value));
    EXPECT_TRUE(keeps_text(operand));
}

// The target is returned and has lost its text; the right operand stays as it is, text included.
inline void check_in_place(const BinaryRow& row, KVAL_UINTEGER& (*operation)(KVAL_UINTEGER&, const KVAL_UINTEGER&)) {
    SCOPED_TRACE(row.name);
    KVAL_UINTEGER target(row.left), right(row.right);
    cache_text(target);
    cache_text(right);
    EXPECT_EQ(&operation(target, right), &target);
    EXPECT_EQ(printed(target), row.want);
    EXPECT_FALSE(keeps_text(target));
    EXPECT_EQ(printed(right), printed(row.right));
    EXPECT_TRUE(keeps_text(right));
}

inline void check_in_place(const NumberRow& row, KVAL_UINTEGER& (*operation)(KVAL_UINTEGER&, unsigned)) {
    SCOPED_TRACE(row.name);
    KVAL_UINTEGER target(row.value);
    cache_text(target);
    EXPECT_EQ(&operation(target, row.number), &target);
    EXPECT_EQ(printed(target), row.want);
    EXPECT_FALSE(keeps_text(target));
}
