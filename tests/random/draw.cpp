// The shapes of random operands, numbers and texts.
#include "draw.h"

#include <algorithm>
#include <array>
#include <cstddef>

using twin::Argument;
using twin::Content;
using twin::Text;

namespace {

constexpr unsigned kWordBits = 32;
constexpr unsigned kOnes = 0xFFFFFFFF;

using Words = std::vector<unsigned>;
using Shape = void (*)(Draw&, Words&, unsigned);  // fills words that are all 0, for the given width

void flip(Words& words, unsigned pos) { words[pos / kWordBits] ^= 1u << pos % kWordBits; }

void zero(Draw&, Words&, unsigned) {}
void one(Draw&, Words& words, unsigned) { words.front() = 1; }
void all_ones(Draw&, Words& words, unsigned) { std::fill(words.begin(), words.end(), kOnes); }
void random_bits(Draw& draw, Words& words, unsigned) {
    for (unsigned& word : words) word = draw.word();
}
void single_bit(Draw& draw, Words& words, unsigned width) { flip(words, draw.below(width)); }
void all_but_one_bit(Draw& draw, Words& words, unsigned width) {
    all_ones(draw, words, width);
    single_bit(draw, words, width);
}
void equal_words(Draw& draw, Words& words, unsigned) { std::fill(words.begin(), words.end(), draw.word()); }
void low_word_only(Draw& draw, Words& words, unsigned) { words.front() = draw.word(); }
void top_word_only(Draw& draw, Words& words, unsigned) { words.back() = draw.word(); }
void top_bit_only(Draw&, Words& words, unsigned width) { flip(words, width - 1); }
// Runs of ones and zeros, from single bits to several words.
void runs(Draw& draw, Words& words, unsigned width) {
    const unsigned longest = draw.once_in(2) ? 8 : 100;
    bool ones = draw.once_in(2);
    for (unsigned pos = 0; pos < width; ones = !ones) {
        for (unsigned left = 1 + draw.below(longest); left > 0 && pos < width; --left, ++pos) {
            if (ones) flip(words, pos);
        }
    }
}
// Whole words of ones and zeros, through which a carry or a borrow runs on.
void whole_words(Draw& draw, Words& words, unsigned) {
    for (unsigned& word : words) word = draw.once_in(3) ? 0 : kOnes;
}

constexpr std::array<Shape, 12> kShapes = {
    zero,        one,           all_ones,      random_bits,  single_bit, all_but_one_bit,
    equal_words, low_word_only, top_word_only, top_bit_only, runs,       whole_words};

unsigned top_mask(unsigned width) { return kOnes >> (kWordBits - 1 - (width - 1) % kWordBits); }

void trim(Words& words, unsigned width) { words.back() &= top_mask(width); }

// Once in four times the top word is dirty: with bits above the width, as a raw store may leave them.
Words draw_plane(Draw& draw, unsigned width) {
    Words words((width + kWordBits - 1) / kWordBits);
    draw.one_of(kShapes)(draw, words, width);
    trim(words, width);
    if (draw.once_in(4)) words.back() |= (draw.once_in(2) ? kOnes : draw.word()) & ~top_mask(width);
    return words;
}

bool any(const Words& words) {
    return std::any_of(words.begin(), words.end(), [](unsigned word) { return word != 0; });
}

Text draw_cached(Draw& draw) { return draw.once_in(3) ? Text::None : draw_kind(draw); }

constexpr std::array<unsigned, 8> kCounts = {0, 1, 31, 32, 33, 63, 64, 65};
constexpr std::array<unsigned, 3> kExtremes = {0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

// A count of bits near the ends of the first words, near the width, or anywhere; small enough for a result grown by it.
unsigned draw_growth(Draw& draw, const model::Value& value) {
    if (draw.once_in(3)) return value.width - 1 + draw.below(3);
    return draw.once_in(2) ? draw.one_of(kCounts) : draw.below(value.width + kWordBits);
}

unsigned draw_operand(Draw& draw, const model::Value& value) {
    constexpr std::array<unsigned, 6> numbers = {0, 1, 2, 0x7FFFFFFF, 0x80000000, kOnes};
    switch (draw.below(3)) {
        case 0:
            return draw.one_of(numbers);
        case 1:
            return value.word(0) + draw.below(3) - 1;
        default:
            return draw.word();
    }
}

}  // namespace

const std::vector<unsigned>& boundary_widths() {
    static const std::vector<unsigned> widths = {1,   8,   31,  32,  33,  63,  64,  65,  95,   96,   97,  127,
                                                 128, 129, 160, 192, 224, 255, 256, 257, 1023, 1024, 1025};
    return widths;
}

Content draw_content(Draw& draw, unsigned width) {
    Content content{width, draw_plane(draw, width), {}, {}, draw_cached(draw)};
    if (draw.once_in(2)) content.mask = draw_plane(draw, width);
    if (draw.once_in(6) ? draw.once_in(2) : any(content.mask)) content.flags += 'X';
    for (const char letter : {'Z', 'L', 'H'}) {
        if (draw.once_in(8)) content.flags += letter;
    }
    return content;
}

Content draw_similar(Draw& draw, unsigned width, const Content& other) {
    Content content = other;
    const std::size_t size = (width + kWordBits - 1) / kWordBits;
    content.width = width;
    content.words.resize(size);
    content.mask.resize(size);
    content.text = draw_cached(draw);
    trim(content.words, width);
    trim(content.mask, width);
    if (draw.once_in(2)) {
        Words& plane = draw.once_in(4) ? content.mask : content.words;
        flip(plane, draw.below(width));
    }
    return content;
}

unsigned draw_number(Draw& draw, Argument argument, const model::Value& value) {
    switch (argument) {
        case Argument::None:
            return 0;
        case Argument::Number:
            return draw_operand(draw, value);
        case Argument::Count:
            return draw.once_in(8) ? draw.one_of(kExtremes) : draw_growth(draw, value);
        case Argument::Distance:
            return draw.once_in(8) ? 0x7FFFFFFF : draw_growth(draw, value);
        case Argument::Growth:
            return draw_growth(draw, value);
        case Argument::Position:  // one below the first bit and up to two above the storage, too
            if (draw.once_in(8)) return draw.one_of(kExtremes);
            return draw.once_in(3) ? value.width - 1 + draw.below(3) : draw.below(value.width + kWordBits + 2) - 1;
        case Argument::Index:
            return draw.below(value.words() + 3) - 1;
        case Argument::Width:
            if (draw.once_in(8)) return draw.once_in(2) ? 0x80000000 : 0xFFFFFFFF;  // negative when read as signed
            return draw.once_in(2) ? draw.one_of(boundary_widths()) : draw.below(200);
    }
    return 0;
}

Text draw_kind(Draw& draw) { return draw.once_in(2) ? Text::Hexadecimal : Text::Binary; }

std::string draw_text(Draw& draw, unsigned max_length) {
    static const std::string junk = "01Xx9aAfFgGzZ +-\t\n_?\x80";
    static const std::array<std::string, 4> alphabets = {"01", "01X", "0123456789ABCDEF", junk};
    static const std::array<std::string, 6> prefixes = {"0x", "0X", "-", "+", " ", " -0x"};
    const std::string& alphabet = draw.one_of(alphabets);
    std::string text = draw.once_in(8) ? draw.one_of(prefixes) : "";
    const unsigned tame = draw.once_in(2) ? 40 : 4000;  // junk once in so many characters
    for (unsigned left = draw.below(max_length + 1); left > 0; --left) {
        text += draw.once_in(tame) ? draw.one_of(junk) : draw.one_of(alphabet);
    }
    return text;
}
