// Tests of the simulators' vectors: four-state and two-state, in and out, where they end, and what is left alone.
#include <gtest/gtest.h>

#include <kval.h>
#include <kval/vpi.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "../unit/unit_support.h"

// The headers of real simulators, where they are installed. VPI_VECVAL says to svdpi.h that vpi_user.h has declared the
// struct, which Icarus Verilog's does not say itself.
#if __has_include(<iverilog/vpi_user.h>)
#include <iverilog/vpi_user.h>
#define VPI_VECVAL
#endif
#if __has_include(<svdpi.h>)
#include <svdpi.h>
#endif

namespace {

// The two ways in which the simulators' headers declare the struct.
struct UnsignedVec {
    std::uint32_t aval, bval;
};
struct SignedVec {
    int aval, bval;
};

constexpr std::uint32_t kCanary = 0xC0FFEE11;

// A vector from one letter a bit, the most significant first: 0, 1, Z and X by the encoding's table. The bits above the
// width read `above`, and one more element, all canary, ends the vector.
template <typename Vec = UnsignedVec>
std::vector<Vec> encoded(const std::string& letters, char above = '0') {
    const std::size_t words = (letters.size() + 31) / 32;
    std::vector<std::uint32_t> aval(words), bval(words);
    for (std::size_t pos = 0; pos < 32 * words; ++pos) {
        const char letter = pos < letters.size() ? letters[letters.size() - 1 - pos] : above;
        const std::uint32_t bit = 1u << pos % 32;
        if (letter == '1' || letter == 'X') aval[pos / 32] |= bit;
        if (letter == 'Z' || letter == 'X') bval[pos / 32] |= bit;
    }
    std::vector<Vec> vec(words + 1);
    for (std::size_t i = 0; i < words; ++i) {
        vec[i].aval = static_cast<decltype(vec[i].aval)>(aval[i]);
        vec[i].bval = static_cast<decltype(vec[i].bval)>(bval[i]);
    }
    vec[words].aval = vec[words].bval = static_cast<decltype(vec[words].aval)>(kCanary);
    return vec;
}

// Both words of every element, canary included.
template <typename Vec>
std::vector<std::uint32_t> raw(const std::vector<Vec>& vec) {
    std::vector<std::uint32_t> words;
    for (const Vec& element : vec) {
        words.push_back(static_cast<std::uint32_t>(element.aval));
        words.push_back(static_cast<std::uint32_t>(element.bval));
    }
    return words;
}

// What to_vecval writes over a vector of as many elements as the value has, which was all ones before, and a canary.
template <typename Vec = UnsignedVec>
std::vector<std::uint32_t> written(const KVAL_UINTEGER& value) {
    std::vector<Vec> vec = encoded<Vec>(std::string(value.bitwidth(), '1'), 'X');
    kval::to_vecval(value, vec.data());
    return raw(vec);
}

KVAL_UINTEGER read(const std::string& letters, char above = '0') {
    return kval::from_vecval(encoded(letters, above).data(), static_cast<unsigned>(letters.size()));
}

// The value that the rules require for these letters, made bit by bit: Z is a flag where every letter is Z, an X else.
KVAL_UINTEGER required(const std::string& letters) {
    KVAL_UINTEGER value(0, static_cast<unsigned>(letters.size()));
    if (letters.find_first_not_of('Z') == std::string::npos) return value.force_z();
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const int pos = static_cast<int>(letters.size() - 1 - i);
        if (letters[i] == '1') value.set_bit(pos, 1);
    }
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const int pos = static_cast<int>(letters.size() - 1 - i);
        if (letters[i] == 'X' || letters[i] == 'Z') value.set_x(pos);
    }
    return value;
}

// The same letters with every Z beside other bits as the X that it becomes.
std::string folded(std::string letters) {
    if (letters.find_first_not_of('Z') == std::string::npos) return letters;
    for (char& letter : letters) letter = letter == 'Z' ? 'X' : letter;
    return letters;
}

std::string draw_letters(std::mt19937& random, unsigned width, const std::string& alphabet) {
    std::string letters(width, '0');
    for (char& letter : letters) letter = alphabet[random() % alphabet.size()];
    return letters;
}

// The mixtures that a width is tried with.
const char* const kAlphabets[] = {"0", "1", "Z", "X", "01", "01X", "01Z", "ZX", "01ZX", "0000000X", "ZZZZZZZ1"};

// ---- four-state, in ----

TEST(FromVecval, Rules) {
    const struct {
        const char* name;
        const char* letters;
        KVAL_UINTEGER value;
    } rows[] = {
        {"0 and 1", "01100101", from_words(8, {0x65})},
        {"one bit, 0", "0", from_words(1, {0})},
        {"one bit, 1", "1", from_words(1, {1})},
        {"one bit, X", "X", from_words(1, {0}, {1}, true)},
        {"one bit, Z: all there is", "Z", marked(from_words(1, {0}), "Z")},
        {"an X bit sets flag X, with 0 underneath", "011X0101", from_words(8, {0x65}, {0x10}, true)},
        {"every bit X", "XXXXXXXX", from_words(8, {0}, {0xFF}, true)},
        {"every bit Z is flag Z, with known 0", "ZZZZZZZZ", marked(from_words(8, {0}), "Z")},
        {"Z beside 0 is X", "Z0000000", from_words(8, {0}, {0x80}, true)},
        {"Z beside 1 is X", "1111111Z", from_words(8, {0xFE}, {0x01}, true)},
        {"Z beside X is X", "ZZZZXZZZ", from_words(8, {0}, {0xFF}, true)},
        {"all four", "01ZX", from_words(4, {4}, {3}, true)},
        {"32 bits of Z", "ZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ", marked(from_words(32, {0}), "Z")},
        {"33 bits of Z", "ZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ", marked(from_words(33, {0, 0}), "Z")},
        {"a known bit above 32 of Z", "0ZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ",
         from_words(33, {0, 0}, {0xFFFFFFFF, 0}, true)},
        {"a Z above 32 known bits", "Z00000000000000000000000000000001", from_words(33, {1, 0}, {0, 1}, true)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(printed(read(row.letters)), printed(row.value));
    }
}

TEST(FromVecval, EveryWidthToOneHundred) {
    std::mt19937 random(1);
    for (unsigned width = 1; width <= 100; ++width) {
        for (const char* alphabet : kAlphabets) {
            const std::string letters = draw_letters(random, width, alphabet);
            EXPECT_EQ(printed(read(letters)), printed(required(letters))) << letters;
        }
    }
}

TEST(FromVecval, OneBitOfEachPlaceDecides) {
    for (unsigned width = 2; width <= 100; ++width) {
        for (unsigned place = 0; place < width; ++place) {
            for (const char other : {'0', '1', 'X'}) {
                std::string letters(width, 'Z');
                letters[place] = other;
                EXPECT_EQ(printed(read(letters)), printed(required(letters))) << letters;
            }
        }
    }
}

TEST(FromVecval, BitsAboveTheWidthAreIgnored) {
    std::mt19937 random(2);
    for (unsigned width = 1; width <= 100; ++width) {
        for (const char* alphabet : kAlphabets) {
            const std::string letters = draw_letters(random, width, alphabet);
            for (const char above : {'1', 'Z', 'X'}) {
                EXPECT_EQ(printed(read(letters, above)), printed(required(letters))) << letters << " below " << above;
            }
        }
    }
}

TEST(FromVecval, LongVectors) {
    std::mt19937 random(3);
    for (const unsigned width : {1000u, 4096u, 100001u}) {
        for (const char* alphabet : kAlphabets) {
            const std::string letters = draw_letters(random, width, alphabet);
            EXPECT_EQ(printed(read(letters)), printed(required(letters))) << width << " bits of " << alphabet;
        }
    }
}

TEST(FromVecval, ASignedStruct) {
    const std::string letters = "1X0Z" + std::string(31, '1') + "0" + "X";
    const KVAL_UINTEGER value =
        kval::from_vecval(encoded<SignedVec>(letters, 'X').data(), static_cast<unsigned>(letters.size()));
    EXPECT_EQ(printed(value), printed(required(letters)));
}

TEST(FromVecval, WidthsThatNoVectorHas) {
    for (const unsigned width : {0u, 0x80000000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(printed(kval::from_vecval<UnsignedVec>(nullptr, width)), printed(KVAL_UINTEGER(0, 1))) << width;
        EXPECT_EQ(printed(kval::from_bitvec(nullptr, width)), printed(KVAL_UINTEGER(0, 1))) << width;
    }
}

TEST(FromVecval, MakesASignedValue) {
    const KVAL_SINTEGER minus_two(read("111110"));
    EXPECT_EQ(minus_two.signed_value(), -2);
}

// ---- four-state, out ----

TEST(ToVecval, Rules) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        const char* letters;
    } rows[] = {
        {"0 and 1", from_words(8, {0x65}), "01100101"},
        {"one bit, 1", from_words(1, {1}), "1"},
        {"an X bit over 0", from_words(8, {0x65}, {0x10}, true), "011X0101"},
        {"an X bit over 1", from_words(8, {0x75}, {0x10}, true), "011X0101"},
        {"X bits without flag X", from_words(8, {0x65}, {0x10}), "011X0101"},
        {"flag X without X bits", from_words(8, {0x65}, {}, true), "01100101"},
        {"high impedance", marked(from_words(8, {0x65}), "Z"), "ZZZZZZZZ"},
        {"weak low", marked(from_words(8, {0x65}), "L"), "00000000"},
        {"weak high", marked(from_words(8, {0x65}), "H"), "11111111"},
        {"Z before weak low and weak high", marked(from_words(8, {0x65}), "ZLH"), "ZZZZZZZZ"},
        {"Z before weak high", marked(from_words(8, {0x65}), "ZH"), "ZZZZZZZZ"},
        {"weak low before weak high", marked(from_words(8, {0x65}), "LH"), "00000000"},
        {"X before Z", marked(from_words(8, {0x65}, {0x81}, true), "Z"), "XZZZZZZX"},
        {"X before weak low", marked(from_words(8, {0x65}, {0x81}, true), "L"), "X000000X"},
        {"X before weak high", marked(from_words(8, {0x65}, {0x81}, true), "H"), "X111111X"},
        {"33 bits, high impedance", marked(from_words(33, {0, 0}), "Z"), "ZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZZ"},
        {"33 bits, weak high and X", marked(from_words(33, {0, 0}, {0x80000000, 0}, true), "H"),
         "1X1111111111111111111111111111111"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(written(row.value), raw(encoded(row.letters)));
        EXPECT_EQ(written<SignedVec>(row.value), raw(encoded(row.letters)));
    }
}

// A vector that went in comes out again, but for Z bits beside others; above the width there are zeros, and beyond the
// last element nothing is written.
TEST(ToVecval, EveryWidthToOneHundred) {
    std::mt19937 random(4);
    for (unsigned width = 1; width <= 100; ++width) {
        for (const char* alphabet : kAlphabets) {
            const std::string letters = draw_letters(random, width, alphabet);
            EXPECT_EQ(written(required(letters)), raw(encoded(folded(letters)))) << letters;
            EXPECT_EQ(written(read(letters, 'X')), raw(encoded(folded(letters)))) << letters;
        }
    }
}

TEST(ToVecval, ComesBackAsTheSameValue) {
    std::mt19937 random(5);
    for (unsigned width = 1; width <= 100; ++width) {
        for (const char* alphabet : {"01", "01X", "Z"}) {
            const KVAL_UINTEGER value = required(draw_letters(random, width, alphabet));
            std::vector<SignedVec> vec(static_cast<std::size_t>(value.get_size()));
            kval::to_vecval(value, vec.data());
            EXPECT_EQ(printed(kval::from_vecval(vec.data(), width)), printed(value));
        }
    }
}

TEST(ToVecval, BitsAboveTheWidthOfSignedValuesStayInside) {
    const KVAL_SINTEGER minus_one(-1, 40);
    ASSERT_EQ(minus_one.get_uvalue_at(1), 0xFFFFFFFF) << "holds bits above its width";
    EXPECT_EQ(written(minus_one), raw(encoded(std::string(40, '1'))));

    KVAL_SINTEGER marked_above(0, 40);
    marked_above.set_xmask_at(1, 0xFFFFFF00);
    EXPECT_EQ(written(marked_above), raw(encoded(std::string(40, '0'))));
}

TEST(ToVecval, MovedFromWritesNothing) {
    for (const unsigned width : {8u, 100u}) {
        KVAL_UINTEGER value(5, width);
        const KVAL_UINTEGER taken(std::move(value));
        ASSERT_EQ(value.bitwidth(), 0u);  // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(written(value), (std::vector<std::uint32_t>{kCanary, kCanary}));
        kval::to_vecval<UnsignedVec>(value, nullptr);
        kval::to_bitvec(value, nullptr);
    }
}

TEST(ToVecval, LeavesTheValueAndItsText) {
    KVAL_UINTEGER value = required("10X1" + std::string(60, '1'));
    const KVAL_UINTEGER before(value);
    const char* const text = value.as_bin_string();
    written(value);
    std::uint32_t words[2];
    kval::to_bitvec(value, words);
    EXPECT_EQ(printed(value), printed(before));
    EXPECT_EQ(value.as_bin_string(), text) << "the cached text is the same array";
}

// ---- two-state ----

TEST(Bitvec, EveryWidthToOneHundred) {
    std::mt19937 random(6);
    for (unsigned width = 1; width <= 100; ++width) {
        for (const char* alphabet : {"0", "1", "01"}) {
            const std::string letters = draw_letters(random, width, alphabet);
            std::vector<std::uint32_t> clean, dirty;
            for (const UnsignedVec& element : encoded(letters, '0')) clean.push_back(element.aval);
            for (const UnsignedVec& element : encoded(letters, '1')) dirty.push_back(element.aval);

            const KVAL_UINTEGER value = required(letters);
            EXPECT_EQ(printed(kval::from_bitvec(dirty.data(), width)), printed(value)) << letters;
            kval::to_bitvec(value, dirty.data());
            EXPECT_EQ(dirty, clean) << letters;
        }
    }
}

TEST(Bitvec, WhatTwoStatesCannotSayGoesOutAsZero) {
    const struct {
        const char* name;
        KVAL_UINTEGER value;
        std::vector<std::uint32_t> words;
    } rows[] = {
        {"X bits", from_words(40, {0xFFFFFFFF, 0xFF}, {0x80000001, 0x0F}, true), {0x7FFFFFFE, 0xF0}},
        {"X bits without flag X", from_words(8, {0xFF}, {0x0F}), {0xF0}},
        {"flag X without X bits", from_words(8, {0x5A}, {}, true), {0x5A}},
        {"high impedance", marked(from_words(40, {0xFFFFFFFF, 0xFF}), "Z"), {0, 0}},
        {"weak low", marked(from_words(8, {0xFF}), "L"), {0}},
        {"weak high", marked(from_words(40, {0, 0}), "H"), {0xFFFFFFFF, 0xFF}},
        {"weak high and X", marked(from_words(8, {0}, {0x81}, true), "H"), {0x7E}},
        {"Z before weak high", marked(from_words(8, {0xFF}), "ZH"), {0}},
        {"weak low before weak high", marked(from_words(8, {0xFF}), "LH"), {0}},
        {"bits above the width", KVAL_SINTEGER(-1, 40), {0xFFFFFFFF, 0xFF}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::uint32_t> words(row.words.size() + 1, kCanary);
        kval::to_bitvec(row.value, words.data());
        std::vector<std::uint32_t> required_words = row.words;
        required_words.push_back(kCanary);
        EXPECT_EQ(words, required_words);
    }
}

// ---- the simulators' own types, where they are installed ----

#if __has_include(<iverilog/vpi_user.h>)
TEST(VpiHeader, ItsVectorsConvert) {
    s_vpi_vecval vec[2] = {{-1, 0}, {0x05, 0x0C}};  // 36 bits: Z, X, then the known 0 and 1, then 32 ones
    const KVAL_UINTEGER value = kval::from_vecval(vec, 36);
    EXPECT_EQ(printed(value), printed(from_words(36, {0xFFFFFFFF, 0x1}, {0, 0xC}, true)));
    kval::to_vecval(value, vec);
    EXPECT_EQ(static_cast<std::uint32_t>(vec[0].aval), 0xFFFFFFFFu);
    EXPECT_EQ(vec[0].bval, 0);
    EXPECT_EQ(vec[1].aval, 0x0D) << "Z beside other bits has become X";
    EXPECT_EQ(vec[1].bval, 0x0C);
}
#endif

#if __has_include(<svdpi.h>)
TEST(DpiHeader, ItsVectorsConvert) {
    const KVAL_UINTEGER value = required("X01" + std::string(32, '0'));
    svLogicVecVal logic[SV_PACKED_DATA_NELEMS(35)];
    kval::to_vecval(value, logic);
    EXPECT_EQ(printed(kval::from_vecval(logic, 35)), printed(value));

    svBitVecVal bits[SV_PACKED_DATA_NELEMS(35)];
    kval::to_bitvec(value, bits);
    EXPECT_EQ(printed(kval::from_bitvec(bits, 35)), printed(from_words(35, {0, 1})));
}
#endif

}  // namespace
