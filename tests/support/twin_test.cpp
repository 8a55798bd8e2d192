// The twins themselves: every content can be had, cached texts are odd ones, and every single difference is noticed.
#include "twin.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace {

using twin::Content;
using twin::Text;
using twin::Twin;

TEST(Twin, HoldsTheContentOnBothSides) {
    const Content content{40, {0x80000001, 0xFFFFFF05}, {0x3, 0xF0000000}, "ZH"};
    const Twin v(content);
    EXPECT_EQ(v.value.bitwidth(), 40u);
    EXPECT_EQ(v.model.width, 40u);
    for (int i = 0; i < 2; ++i) {
        const auto index = static_cast<std::size_t>(i);
        EXPECT_EQ(v.value.get_uvalue_at(i), content.words[index]);
        EXPECT_EQ(v.value.get_xmask_at(i), content.mask[index]);
        EXPECT_EQ(v.model.word(static_cast<unsigned>(i)), content.words[index]);
        EXPECT_EQ(v.model.mask_word(static_cast<unsigned>(i)), content.mask[index]);
    }
    EXPECT_TRUE(!v.value.is_x() && v.value.is_z() && !v.value.is_wl() && v.value.is_wh());
    EXPECT_TRUE(!v.model.x && v.model.z && !v.model.wl && v.model.wh);
}

TEST(Twin, HasFlagXWithoutMarks) {
    const Twin v(Content{8, {5}, {0}, "X"});
    EXPECT_TRUE(v.value.is_x() && v.model.x);
    EXPECT_EQ(v.value.get_xmask_at(0), 0u);
    EXPECT_EQ(v.model.mask_word(0), 0u);
}

TEST(Twin, IsDescribedAsItIsWritten) {
    const Twin v(Content{33, {0x80000000, 1}, {0xF, 0}, "XL", Text::Binary});
    EXPECT_EQ(twin::describe(v.value), R"({33, {0x80000000, 0x00000001}, {0x0000000f, 0x00000000}, "XL"})");
    EXPECT_EQ(twin::describe(v.model),
              R"({33, {0x80000000, 0x00000001}, {0x0000000f, 0x00000000}, "XL"} with binary text ")" +
                  std::string(33, 'L') + '"');
}

// Wherever this did not hold, a text that is wrongly kept or dropped would pass unnoticed.
TEST(Twin, CachesATextThatItsContentWouldNotPrintAs) {
    for (const unsigned width : {1u, 2u, 3u, 4u, 5u, 32u, 33u, 40u}) {
        for (unsigned low = 0; low < 256; ++low) {
            for (const char* flags : {"", "X", "Z", "XL", "H"}) {
                for (const Text kind : {Text::Hexadecimal, Text::Binary}) {
                    const Twin v(Content{width, {low & 0xF, low}, {low >> 4, low << 4}, flags, kind});
                    ASSERT_EQ(v.model.kind, kind);
                    model::Value anew = model::copy(v.model);
                    const std::string own =
                        kind == Text::Binary ? model::as_bin_string(anew) : model::as_hex_string(anew);
                    ASSERT_NE(v.model.text, own) << twin::describe(v.model);
                    Twin copy = v;
                    ASSERT_EQ(copy.model.text, v.model.text);
                    ASSERT_TRUE(same(copy, kind));
                }
            }
        }
    }
}

struct Difference {
    const char* name;
    std::function<void(KVAL_UINTEGER&)> make;
};

TEST(Twin, NoticesEveryDifferenceInContent) {
    const std::vector<Difference> differences = {
        {"width", [](KVAL_UINTEGER& v) { v.bitwidth(41); }},
        {"top value bit", [](KVAL_UINTEGER& v) { v.set_uvalue_at(1, 0x85); }},
        {"stray value bit", [](KVAL_UINTEGER& v) { v.set_uvalue_at(1, 0x80000005); }},
        {"x-mask bit", [](KVAL_UINTEGER& v) { v.set_xmask_at(0, 1); }},
        {"stray x-mask bit", [](KVAL_UINTEGER& v) { v.set_xmask_at(1, 0x100); }},
        {"flag X", [](KVAL_UINTEGER& v) { v.force_x().set_xmask_at(0, 0).set_xmask_at(1, 0); }},
        {"flag Z", [](KVAL_UINTEGER& v) { v.force_z(); }},
        {"flag weak low", [](KVAL_UINTEGER& v) { v.force_wl(); }},
        {"flag weak high", [](KVAL_UINTEGER& v) { v.force_wh(); }},
    };
    for (const Difference& difference : differences) {
        Twin v(Content{40, {1, 5}, {}, ""});
        ASSERT_TRUE(same_content(v));
        difference.make(v.value);
        EXPECT_FALSE(same_content(v)) << difference.name;
    }
}

TEST(Twin, NoticesTextsThatWereKeptDroppedOrReplaced) {
    const Content known{40, {1, 5}, {}, ""};
    for (const Text kind : {Text::Hexadecimal, Text::Binary}) {
        Twin kept(known);
        twin::cache_odd_text(kept.value, kind);
        EXPECT_FALSE(same(kept, kind));

        Content with_text = known;
        with_text.text = kind;
        Twin dropped(with_text);
        dropped.value.DeleteString();
        EXPECT_FALSE(same(dropped, kind));

        Twin replaced(with_text);
        kind == Text::Binary ? replaced.value.as_hex_string() : replaced.value.as_bin_string();
        EXPECT_FALSE(same(replaced, kind));
    }
}

// Such a text ends at its first zero byte for whoever takes it as a string, but all of it must be right.
TEST(Twin, NoticesDifferencesBehindAZeroByte) {
    Twin v(Content{3, {0}, {1}, "Z"});
    ASSERT_EQ(model::as_bin_string(v.model), std::string("\0ZZ", 3));
    EXPECT_TRUE(same(v, Text::Binary));
    v.model.text.back() = '?';
    EXPECT_FALSE(same(v, Text::Binary));
}

}  // namespace
