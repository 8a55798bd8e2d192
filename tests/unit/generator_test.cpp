// Tests of the additive feedback generator: its numbers, its types, saved positions and the calls that it refuses.
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "kval.h"

namespace {

static_assert(std::is_same<decltype(kval_random()), std::int64_t>::value, "");
static_assert(noexcept(kval_random()) && noexcept(kval_srandom(1U)), "");
static_assert(noexcept(kval_initstate(1U, nullptr, 0UL)) && noexcept(kval_setstate(nullptr)), "");

constexpr std::size_t kDegree[] = {0, 7, 15, 31, 63};
constexpr std::size_t kSeparation[] = {0, 3, 1, 3, 1};

/// The rules once more, over a vector: what the generator has to draw.
class Replay {
  public:
    /// As kval_initstate leaves a state of this type.
    Replay(int type, unsigned seed) : Replay(type, std::vector<std::uint64_t>{seed}) {
        for (std::size_t i = 1; i < Degree(); ++i) {
            words_.push_back(words_.back() * 1103515145U + 12345U);
        }
        for (std::size_t i = 0; i < 10 * Degree(); ++i) {
            Next();
        }
    }
    Replay(int type, std::vector<std::uint64_t> words, std::size_t rear = 0) : type_(type), words_(words) {
        Seek(rear);
    }

    void Seek(std::size_t rear) {
        rear_ = rear;
        front_ = type_ == 0 ? 0 : (rear + kSeparation[type_]) % Degree();
    }
    std::int64_t Next() {
        if (type_ == 0) {
            words_[0] = (words_[0] * 1103515245U + 12345U) & 0x7FFFFFFFFFFFFFFF;
            return static_cast<std::int64_t>(words_[0]);
        }
        words_[front_] += words_[rear_];
        const std::uint64_t drawn = words_[front_] >> 1;
        front_ = (front_ + 1) % Degree();
        rear_ = (rear_ + 1) % Degree();
        return static_cast<std::int64_t>(drawn);
    }
    /// The saved-position word of this moment.
    std::int64_t Position() const { return type_ == 0 ? 0 : 5 * static_cast<std::int64_t>(rear_) + type_; }
    std::vector<std::uint64_t> Words() const { return words_; }

  private:
    std::size_t Degree() const { return kDegree[type_]; }

    int type_;
    std::vector<std::uint64_t> words_;
    std::size_t rear_;
    std::size_t front_;
};

/// The initial table.
const std::vector<std::uint64_t>& initial_words() {
    static const std::vector<std::uint64_t> words = [] {
        const std::int64_t numbers[] = {
            -851904987,  -43806228,   -2029755270, 1390239686,  -1912102820, -485608943,  1969813258, -1590463333,
            -1944053249, 455935928,   508023712,   -1714531963, 1800685987,  -2015299881, 654595283,  -1149023258,
            -1470005550, -1143256056, -1325577603, -1568001885, 1275120390,  -607508183,  -205999574, -1696891592,
            1492211999,  -1528267240, -952028296,  -189082757,  362343714,   1424981831,  2039449641};
        std::vector<std::uint64_t> sign_extended;
        for (const std::int64_t number : numbers) {
            sign_extended.push_back(static_cast<std::uint64_t>(number));
        }
        return sign_extended;
    }();
    return words;
}

/// A buffer for the largest type, between two words that no call may touch. `offset` bytes put it out of alignment.
class Buffer {
  public:
    explicit Buffer(std::size_t offset = 0) : offset_(8 + offset) { bytes_.fill(0xA5); }
    ~Buffer() {
        for (std::size_t i = 0; i < bytes_.size(); ++i) {
            if (i < offset_ || i >= offset_ + 512) {
                EXPECT_EQ(bytes_[i], 0xA5) << "written outside the buffer";
            }
        }
    }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;

    void* Address() { return bytes_.data() + offset_; }
    std::int64_t Word(std::size_t index) const {
        std::int64_t word;
        std::memcpy(&word, bytes_.data() + offset_ + 8 * index, 8);
        return word;
    }
    void SetWord(std::size_t index, std::int64_t word) { std::memcpy(bytes_.data() + offset_ + 8 * index, &word, 8); }
    /// Whether every byte from `start` on is as the constructor left it.
    bool UntouchedFrom(std::size_t start) const {
        for (std::size_t i = offset_ + start; i < bytes_.size(); ++i) {
            if (bytes_[i] != 0xA5) return false;
        }
        return true;
    }

  private:
    std::size_t offset_;
    std::array<unsigned char, 8 + 512 + 16> bytes_;
};

constexpr std::size_t kEarly = 100;

/// The first numbers of the process, drawn by a static constructor, before any test and before main.
const std::array<std::int64_t, kEarly> early_numbers = [] {
    std::array<std::int64_t, kEarly> numbers{};
    for (std::int64_t& number : numbers) {
        number = kval_random();
    }
    return numbers;
}();

/// Every test runs in a state of its own and gives the generator back as it found it.
class Generator : public testing::Test {
  protected:
    Generator() : former_(kval_initstate(1, own_.Address(), 256)) {}
    ~Generator() override { EXPECT_NE(kval_setstate(former_), nullptr); }

    /// The state that was in use when the test began.
    void* Former() const { return former_; }
    Buffer& Own() { return own_; }

  private:
    Buffer own_;
    void* former_;
};

void expect_numbers(Replay& expected, int count) {
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(kval_random(), expected.Next()) << "draw " << i;
    }
}

unsigned long bytes_of_type(int type) {
    constexpr unsigned long kBytes[] = {8, 32, 64, 128, 256};
    return kBytes[type];
}

// ---- the initial state ----

TEST(GeneratorBeforeMain, DrawsFromTheInitialTable) {
    EXPECT_EQ(early_numbers[0], 269167349) << "0x100B2AF5";
    EXPECT_EQ(early_numbers[1], 9223372035876821284);
    EXPECT_EQ(early_numbers[2], 9223372035597093701);
    EXPECT_EQ(early_numbers[3], 1254073978);
    EXPECT_EQ(early_numbers[30], 1497742220);
    EXPECT_EQ(early_numbers[31], 9223372031966201121);
    EXPECT_EQ(early_numbers[99], 9223371700950143404);
    Replay replay(3, initial_words());
    for (std::size_t i = 0; i < kEarly; ++i) {
        ASSERT_EQ(early_numbers[i], replay.Next()) << "draw " << i;
    }
}

TEST_F(Generator, ContinuesAStateThatHoldsTheInitialTable) {
    Buffer buffer;
    buffer.SetWord(0, 3);
    for (std::size_t i = 0; i < 31; ++i) {
        buffer.SetWord(i + 1, static_cast<std::int64_t>(initial_words()[i]));
    }
    ASSERT_EQ(kval_setstate(buffer.Address()), Own().Address());
    EXPECT_EQ(kval_random(), 269167349);
    EXPECT_EQ(buffer.Word(4), 0x201655EB) << "the sum is stored into state word 3";
    for (std::size_t i = 1; i < kEarly; ++i) {
        ASSERT_EQ(kval_random(), early_numbers[i]);
    }
    EXPECT_EQ(kval_setstate(Own().Address()), buffer.Address());
    EXPECT_TRUE(buffer.UntouchedFrom(256)) << "type 3 uses 32 words";
}

TEST_F(Generator, TheFormerStateCanBeReturnedTo) {
    std::int64_t saved;
    std::memcpy(&saved, Former(), 8);
    EXPECT_TRUE(saved >= 0 && saved % 5 <= 4);
    EXPECT_EQ(kval_setstate(Former()), Own().Address());
    kval_random();
    EXPECT_EQ(kval_setstate(Own().Address()), Former());
    std::int64_t one_on;
    std::memcpy(&one_on, Former(), 8);
    EXPECT_NE(one_on, saved);
}

// ---- seeding and types ----

TEST_F(Generator, SeededNumbersOfEveryType) {
    const struct {
        int type;
        unsigned seed;
        std::int64_t numbers[3];
    } rows[] = {
        {0, 0, {12345, 13622895711870, 8200051057242679263}},
        {0, 1, {1103527590, 1217759518843121895, 6203029289827427476}},
        {0, 0xFFFFFFFF, {4739561886808924620, 3583837655440915477, 1009092645467089706}},
        {1, 0, {1112193047076397185, 938717582897750353, 2777760891168521887}},
        {1, 1, {6625919277698935258, 7295985780554300680, 343672613204438675}},
        {1, 0xFFFFFFFF, {8641605302617331496, 865338346502866329, 5788925596407975595}},
        {2, 0, {8539671450386873044, 4463602620575034245, 125364398851376029}},
        {2, 1, {6099015706938333515, 3767988747125528245, 540663524966583536}},
        {2, 0xFFFFFFFF, {7574372734598061149, 7191865154754789461, 6024262939884894794}},
        {3, 0, {6727493439485151679, 8855412882287410827, 6717122042738492334}},
        {3, 1, {258282553013381877, 4545552226989742372, 8953020044930534213}},
        {3, 0xFFFFFFFF, {1578157492742252680, 5206527446779421682, 4384827208291990550}},
        {4, 0, {1660829356818083146, 5519821710694002335, 7585788646771142414}},
        {4, 1, {5182694729128649818, 5972617238121857145, 3220788308564860823}},
        {4, 0xFFFFFFFF, {7313349548529464890, 6812472141849468101, 6528789873568710277}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE("type " + std::to_string(row.type) + ", seed " + std::to_string(row.seed));
        Buffer buffer;
        ASSERT_EQ(kval_initstate(row.seed, buffer.Address(), bytes_of_type(row.type)), Own().Address());
        for (const std::int64_t number : row.numbers) {
            EXPECT_EQ(kval_random(), number);
        }
        kval_srandom(row.seed);
        for (const std::int64_t number : row.numbers) {
            EXPECT_EQ(kval_random(), number) << "reseeded in place";
        }
        Replay replay(row.type, row.seed);
        kval_srandom(row.seed);
        expect_numbers(replay, 200);
        ASSERT_EQ(kval_setstate(Own().Address()), buffer.Address());
    }
}

TEST_F(Generator, ThresholdsCountBytesAsIfWordsHadFour) {
    const struct {
        unsigned long bytes;
        int type;
    } rows[] = {
        {8, 0},   {16, 0},  {31, 0},  {32, 1},  {63, 1},     {64, 2},   {127, 2},
        {128, 3}, {255, 3}, {256, 4}, {257, 4}, {100000, 4}, {~0UL, 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.bytes) + " bytes");
        Buffer buffer;
        ASSERT_EQ(kval_initstate(99, buffer.Address(), row.bytes), Own().Address());
        EXPECT_EQ(buffer.Word(0), row.type) << "a seeded state starts at rear index 0";
        const std::size_t used = row.type == 0 ? 2 : kDegree[row.type] + 1;
        EXPECT_TRUE(buffer.UntouchedFrom(8 * used));
        Replay replay(row.type, 99);
        expect_numbers(replay, 130);
        ASSERT_EQ(kval_setstate(Own().Address()), buffer.Address());
        EXPECT_EQ(buffer.Word(0), replay.Position());
        EXPECT_TRUE(buffer.UntouchedFrom(8 * used)) << "words beyond the degree are not used";
    }
}

TEST_F(Generator, Type0IsTheMaskedCongruentialStepOnWord1) {
    Buffer buffer;
    kval_initstate(0xFFFFFFFF, buffer.Address(), 16);
    EXPECT_EQ(buffer.Word(1), 0xFFFFFFFF) << "the seed, zero-extended, and nothing discarded (required)";
    EXPECT_EQ(kval_random(), 4739561886808924620);
    EXPECT_EQ(buffer.Word(1), 4739561886808924620);
    kval_srandom(7);
    EXPECT_EQ(buffer.Word(1), 7);
    EXPECT_EQ(kval_random(), 7 * 1103515245LL + 12345);
    EXPECT_EQ(kval_setstate(Own().Address()), buffer.Address());
    EXPECT_EQ(buffer.Word(0), 0);
}

TEST_F(Generator, SeedingFillsAndDiscards) {
    Buffer buffer;
    kval_initstate(5, buffer.Address(), 128);
    const std::vector<std::uint64_t> words = Replay(3, 5).Words();
    for (std::size_t i = 0; i < words.size(); ++i) {
        EXPECT_EQ(static_cast<std::uint64_t>(buffer.Word(i + 1)), words[i]) << "after 310 draws";
    }
    EXPECT_EQ(kval_setstate(Own().Address()), buffer.Address());
}

// ---- saved positions ----

TEST_F(Generator, SavesItsPositionWhenAStateIsLeft) {
    for (int type = 0; type < 5; ++type) {
        for (const int draws : {0, 1, 3, 7, 15, 30, 31, 62, 63, 64, 200}) {
            SCOPED_TRACE("type " + std::to_string(type) + ", " + std::to_string(draws) + " draws");
            Buffer buffer;
            Replay replay(type, 42);
            kval_initstate(42, buffer.Address(), bytes_of_type(type));
            expect_numbers(replay, draws);
            EXPECT_EQ(buffer.Word(0), type) << "not before it is left";
            ASSERT_EQ(kval_setstate(Own().Address()), buffer.Address());
            EXPECT_EQ(buffer.Word(0), replay.Position());
            ASSERT_EQ(kval_setstate(buffer.Address()), Own().Address());
            expect_numbers(replay, 70);
            Buffer next;
            ASSERT_EQ(kval_initstate(1, next.Address(), 8), buffer.Address()) << "kval_initstate saves it too";
            EXPECT_EQ(buffer.Word(0), replay.Position());
            ASSERT_EQ(kval_setstate(Own().Address()), next.Address());
        }
    }
}

TEST_F(Generator, RoundTripsBetweenBuffersOfEveryType) {
    Buffer buffers[5];
    std::vector<Replay> replays;
    for (int type = 0; type < 5; ++type) {
        replays.emplace_back(type, 1000U + static_cast<unsigned>(type));
        kval_initstate(1000U + static_cast<unsigned>(type), buffers[type].Address(), bytes_of_type(type));
    }
    int current = 4;
    for (int round = 0; round < 60; ++round) {
        const int next = (current + 1 + round % 4) % 5;
        ASSERT_EQ(kval_setstate(buffers[next].Address()), buffers[current].Address());
        expect_numbers(replays[static_cast<std::size_t>(next)], round % 11);
        current = next;
    }
    EXPECT_EQ(kval_setstate(Own().Address()), buffers[current].Address());
}

TEST_F(Generator, ReadsAPositionWrittenByHand) {
    const struct {
        std::int64_t word;
        int type;
        std::size_t rear;
    } rows[] = {
        {23, 3, 4},
        {3, 3, 0},
        {5 * 30 + 3, 3, 30},
        {5 * 28 + 3, 3, 28},
        {1, 1, 0},
        {5 * 6 + 1, 1, 6},
        {5 * 14 + 2, 2, 14},
        {5 * 62 + 4, 4, 62},
        {5 * ((std::int64_t{1} << 32) + 4) + 3, 3, 4},
        {5 * (std::int64_t{7} << 32) + 2, 2, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE("word " + std::to_string(row.word));
        Buffer buffer;
        std::vector<std::uint64_t> words;
        buffer.SetWord(0, row.word);
        for (std::size_t i = 0; i < kDegree[row.type]; ++i) {
            words.push_back(0x9E3779B97F4A7C15U * (i + 1));
            buffer.SetWord(i + 1, static_cast<std::int64_t>(words.back()));
        }
        Replay replay(row.type, words, row.rear);
        ASSERT_EQ(kval_setstate(buffer.Address()), Own().Address());
        expect_numbers(replay, 130);
        ASSERT_EQ(kval_setstate(Own().Address()), buffer.Address());
        EXPECT_EQ(buffer.Word(0), replay.Position());
    }
}

TEST_F(Generator, Type0IgnoresTheRearIndex) {
    for (const std::int64_t word : {0LL, 5LL, 5000LL, -5LL}) {
        SCOPED_TRACE("word " + std::to_string(word));
        Buffer buffer;
        buffer.SetWord(0, word);
        buffer.SetWord(1, 1);
        ASSERT_EQ(kval_setstate(buffer.Address()), Own().Address());
        EXPECT_EQ(kval_random(), 1103527590);
        ASSERT_EQ(kval_setstate(Own().Address()), buffer.Address());
        EXPECT_EQ(buffer.Word(0), 0);
    }
}

TEST_F(Generator, SetstateToTheStateInUseReadsTheOldPositionFirst) {
    Buffer buffer;
    Replay replay(3, 8);
    kval_initstate(8, buffer.Address(), 128);
    expect_numbers(replay, 4);
    EXPECT_EQ(kval_setstate(buffer.Address()), buffer.Address());
    EXPECT_EQ(buffer.Word(0), 5 * 4 + 3) << "the position of this moment is saved";
    replay.Seek(0);  // but the one that was saved before, by kval_initstate, is taken up
    expect_numbers(replay, 100);
    EXPECT_EQ(kval_setstate(Own().Address()), buffer.Address());
}

TEST_F(Generator, InitstateInTheBufferInUse) {
    Buffer buffer;
    kval_initstate(8, buffer.Address(), 256);
    kval_random();
    EXPECT_EQ(kval_initstate(9, buffer.Address(), 64), buffer.Address());
    EXPECT_EQ(buffer.Word(0), 2);
    Replay replay(2, 9);
    expect_numbers(replay, 50);
    EXPECT_EQ(kval_setstate(Own().Address()), buffer.Address());
}

TEST_F(Generator, BuffersOfAnyAlignment) {
    for (std::size_t offset = 1; offset < 8; ++offset) {
        for (int type = 0; type < 5; ++type) {
            SCOPED_TRACE("offset " + std::to_string(offset) + ", type " + std::to_string(type));
            Buffer buffer(offset);
            Replay replay(type, 77);
            ASSERT_EQ(kval_initstate(77, buffer.Address(), bytes_of_type(type)), Own().Address());
            expect_numbers(replay, 40);
            ASSERT_EQ(kval_setstate(Own().Address()), buffer.Address());
            EXPECT_EQ(buffer.Word(0), replay.Position());
            ASSERT_EQ(kval_setstate(buffer.Address()), Own().Address());
            expect_numbers(replay, 40);
            ASSERT_EQ(kval_setstate(Own().Address()), buffer.Address());
        }
    }
}

// ---- what is refused ----

/// Runs `call` five draws into a state; it has to fail with EINVAL, save the current position and change nothing else.
template <class Call>
void expect_refused(Call call) {
    Buffer current;
    Replay replay(3, 31);
    void* const before = kval_initstate(31, current.Address(), 128);
    expect_numbers(replay, 5);
    EXPECT_EQ(current.Word(0), 3);
    errno = 0;
    EXPECT_EQ(call(), nullptr);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(current.Word(0), 5 * 5 + 3) << "the current position has been saved";
    const std::vector<std::uint64_t> words = replay.Words();
    for (std::size_t i = 0; i < words.size(); ++i) {
        EXPECT_EQ(static_cast<std::uint64_t>(current.Word(i + 1)), words[i]);
    }
    expect_numbers(replay, 100);
    EXPECT_EQ(kval_setstate(before), current.Address());
}

TEST_F(Generator, RefusesABufferOfLessThan8Bytes) {
    for (const unsigned long bytes : {0UL, 1UL, 7UL}) {
        SCOPED_TRACE(bytes);
        Buffer buffer;
        expect_refused([&] { return kval_initstate(1, buffer.Address(), bytes); });
        EXPECT_TRUE(buffer.UntouchedFrom(0));
    }
}

TEST_F(Generator, RefusesANullBuffer) {
    expect_refused([] { return kval_initstate(1, nullptr, 256); });
    expect_refused([] { return kval_initstate(1, nullptr, 7); });
    expect_refused([] { return kval_setstate(nullptr); });
}

TEST_F(Generator, RefusesAWordThatIsNoSavedPosition) {
    const std::int64_t two_32 = std::int64_t{1} << 32;
    const std::int64_t words[] = {
        -1,
        -2,
        -3,
        -4,
        -6,
        -7,
        INT64_MIN,  // the type is negative
        5 * 7 + 1,
        5 * 15 + 2,
        5 * 31 + 3,  // the rear index is the degree
        5 * 63 + 4,
        5 * 1000 + 3,
        INT64_MAX,              // and beyond
        5 * (two_32 - 1) + 3,   // -1 in 32 bits
        5 * (two_32 / 2) + 4,   // the least number in 32 bits
        5 * (two_32 + 31) + 3,  // 31 in 32 bits
    };
    for (const std::int64_t word : words) {
        SCOPED_TRACE("word " + std::to_string(word));
        Buffer buffer;
        buffer.SetWord(0, word);
        expect_refused([&] { return kval_setstate(buffer.Address()); });
        EXPECT_EQ(buffer.Word(0), word);
        EXPECT_TRUE(buffer.UntouchedFrom(8));
    }
}

}  // namespace
