// A value of the library beside a value of the model with the same content: building, describing and comparing them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kval.h"
#include "model/model.h"

namespace twin {

using model::Text;

// What a value holds. Every content can be had: missing words are 0, both planes may have stray bits above the width,
// and flag X may disagree with the x-mask.
struct Content {
    unsigned width = 1;
    std::vector<unsigned> words;
    std::vector<unsigned> mask;
    std::string flags;       // the letters of those that are set, of X, Z, L (weak low) and H (weak high)
    Text text = Text::None;  // the kind of text to be cached
};

// Both values answer alike to everything until an operation goes wrong. A text that is asked for with the content is
// not the one that the content would print as, so that a text that was wrongly kept shows, and so does one that was
// wrongly dropped.
struct Twin {
    explicit Twin(const Content& content);
    // Unlike the copy of a value, that of a twin has a cached text too. It is cached anew, so the original must be as
    // built.
    Twin(const Twin& original);
    Twin& operator=(const Twin&) = delete;

    // Signed in type, so that the signed operators may read it too; the unsigned ones see the base.
    KVAL_SINTEGER value;
    model::Value model;
};

// Caches a text that `value` would not print as; its content stays.
void cache_odd_text(KVAL_UINTEGER& value, Text kind);

// Parses a text of the given kind into both; the library gets it in a block that ends with the text.
void parse(Twin& target, const std::string& text, Text kind);

// The content as it is written in a test, and the cached text of a model after it.
std::string describe(const KVAL_UINTEGER& value);
std::string describe(const model::Value& value);

// Whether width, number of words, stored words, x-mask words and flags agree.
testing::AssertionResult same_content(const KVAL_UINTEGER& value, const model::Value& required);
testing::AssertionResult same_content(const Twin& twin);

// Whether the text agrees as well. Asking caches, and drops a text of the other kind: the kind that the model has
// cached is the one to ask for, and `ask` is for a model without text. To see that no text was kept, ask for each kind
// in turn.
testing::AssertionResult same(const KVAL_UINTEGER& value, model::Value& required, Text ask);
testing::AssertionResult same(Twin& twin, Text ask);

}  // namespace twin
