// Tests of the arrays that a thread keeps of its dead values, as far as they show in its stock: what is kept and taken
// again, where a stock begins and ends, and when there is none. tests/memory counts what it takes from the heap.
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/wait.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "kval.h"
#include "unit_support.h"
#include "value/stock.h"

namespace {

using kval::Shelf;
using kval::Stock;
using kval::detail::KeepArrays;

constexpr unsigned kLongestOnShelf = 32 * Stock::kLongest;  // bits

// The shelf of this thread for values of this width, and the pairs of arrays on it.
Shelf& shelf_of(unsigned width) { return kval::stock->shelves[(width + 31) / 32]; }
unsigned kept(unsigned width) { return shelf_of(width).given - shelf_of(width).taken; }

void in_a_thread(void (*work)()) { std::thread(work).join(); }

// Under AddressSanitizer and Valgrind's memcheck nothing is kept: they are to see every array go.
class StockOfAThread : public testing::Test {
  protected:
    void SetUp() override {
        bool keeps = false;
        std::thread([&keeps] {
            { const KVAL_UINTEGER dead(1, 100); }
            keeps = kept(100) != 0;
        }).join();
        if (!keeps) GTEST_SKIP() << "this program keeps no arrays";
    }
};

TEST_F(StockOfAThread, KeepsTheArraysOfADeadValueForTheNextOfItsLength) {
    in_a_thread([] {
        for (const unsigned width : {65U, 96U, 97U, 100U, 256U, 257U, 512U, 513U, kLongestOnShelf}) {
            { const KVAL_UINTEGER dead(1, width); }
            const unsigned before = kept(width);
            EXPECT_GT(before, 0U) << width;
            {
                const KVAL_UINTEGER next(7, width);
                EXPECT_EQ(kept(width), before - 1) << width;
                EXPECT_TRUE(next == 7U) << width;
            }
            EXPECT_EQ(kept(width), before) << width;
        }
    });
}

TEST_F(StockOfAThread, HasNoRoomForTheLengthsOfSmallValues) {
    in_a_thread([] {
        {
            const KVAL_UINTEGER small(1, 64);
            const KVAL_UINTEGER large(1, 65);
        }
        EXPECT_FALSE(shelf_of(64).HasRoom());
        EXPECT_EQ(kept(64), 0U);
        EXPECT_TRUE(shelf_of(65).HasRoom());
        EXPECT_GT(kept(65), 0U);
    });
}

TEST_F(StockOfAThread, KeepsSomeOfEachLength) {
    in_a_thread([] {
        for (const unsigned width : {65U, 512U, 513U, kLongestOnShelf}) {
            { const std::vector<KVAL_UINTEGER> dead(40, KVAL_UINTEGER(1, width)); }
            EXPECT_EQ(kept(width), width <= 512 ? 16U : 8U) << width;
            EXPECT_FALSE(shelf_of(width).HasRoom());
        }
    });
}

// Where the heap has arrays back, others take them at once: the next values get the old arrays only if they were kept.
TEST_F(StockOfAThread, KeepsTheLastEightOfAllLongerLengths) {
    using kval::detail::Fields;
    in_a_thread([] {
        const auto take = [](unsigned first, unsigned last, std::set<std::uint64_t>& arrays) {
            std::vector<KVAL_UINTEGER> values;
            values.reserve(last);
            for (unsigned i = first; i < last; ++i) values.emplace_back(i, i % 2 == 0 ? 5000U : 7000U);
            for (const KVAL_UINTEGER& v : values) arrays.insert({Fields::planes(v).value, Fields::planes(v).mask});
            return values;
        };
        std::set<std::uint64_t> earlier, last_eight, next;
        std::vector<KVAL_UINTEGER> dead = take(0, 4, earlier);
        std::vector<KVAL_UINTEGER> dead_later = take(4, 12, last_eight);
        dead.clear();
        dead_later.clear();
        std::vector<std::unique_ptr<unsigned[]>> others;
        for (const std::size_t words : {157U, 219U}) {
            for (int i = 0; i < 40; ++i) others.push_back(std::make_unique<unsigned[]>(words));
        }
        const std::vector<KVAL_UINTEGER> alive = take(4, 12, next);
        EXPECT_EQ(next, last_eight);
    });
}

// Values of each of these widths come and go, more than are kept; whatever becomes of their arrays, every living one
// has its own.
TEST(Stock, GivesNoTwoValuesTheSameArrays) {
    in_a_thread([] {
        for (const unsigned width : {100U, 1000U, kLongestOnShelf, kLongestOnShelf + 1, 4096U, 66560U, 66561U}) {
            std::vector<KVAL_UINTEGER> alive;
            for (unsigned round = 1; round <= 5; ++round) {
                for (unsigned i = 0; i < 12; ++i) {
                    alive.emplace_back(1000 * round + i, width);
                    alive.back().set_uvalue_at(alive.back().get_size() - 1, 1).set_x(static_cast<int>(round));
                }
                alive.erase(alive.begin(), alive.begin() + static_cast<std::ptrdiff_t>(alive.size() / 2));
                for (const KVAL_UINTEGER& v : alive) {
                    const unsigned of_round = v.uint() / 1000;
                    KVAL_UINTEGER want(v.uint(), width);
                    want.set_uvalue_at(want.get_size() - 1, 1).set_x(static_cast<int>(of_round));
                    ASSERT_TRUE(v == want) << width << " bits, number " << v.uint() << " in round " << round;
                }
            }
            KeepArrays(false);
            for (std::size_t i = 1; i < alive.size(); ++i) ASSERT_FALSE(alive[i] == alive[0]) << width;
            alive.clear();
            KeepArrays(true);
        }
    });
}

TEST_F(StockOfAThread, GetsArraysBackThatAreNotHandedOut) {
    in_a_thread([] {
        { const KVAL_UINTEGER dead(1, 128); }
        const unsigned before = kept(128);
        { const kval::OwnedArrays given_up(4); }
        EXPECT_EQ(kept(128), before);
        kval::OwnedArrays owned(4);
        const kval::Arrays released = owned.release();
        EXPECT_EQ(kept(128), before - 1);
        kval::give_arrays(released, 4);
        EXPECT_EQ(kept(128), before);
    });
}

// The heap gives more than is asked for where arrays are short, so that a loop with one temporary goes round several.
TEST_F(StockOfAThread, StartsShortShelvesWithMoreThanIsTaken) {
    in_a_thread([] {
        const KVAL_UINTEGER shorter(1, 256);
        EXPECT_EQ(kept(256), 3U);
        const KVAL_UINTEGER longer(1, 257);
        EXPECT_EQ(kept(257), 0U);
    });
}

TEST_F(StockOfAThread, GivesUpEverythingWhenNothingIsToBeKept) {
    in_a_thread([] {
        const KVAL_UINTEGER earlier(3, 100);
        { const KVAL_UINTEGER dead(1, 100); }
        KeepArrays(false);
        EXPECT_EQ(kept(100), 0U);
        EXPECT_FALSE(shelf_of(100).HasRoom());
        EXPECT_EQ(earlier.uint(), 3U);
        { const KVAL_UINTEGER dead(1, 100); }
        EXPECT_EQ(kept(100), 0U);
        KeepArrays(true);
        EXPECT_TRUE(shelf_of(100).HasRoom());
        { const KVAL_UINTEGER dead(1, 100); }
        EXPECT_GT(kept(100), 0U);
    });
}

TEST_F(StockOfAThread, IsNotOpenedWhereNothingIsEverKept) {
    in_a_thread([] {
        KeepArrays(false);
        KVAL_UINTEGER v(3, 100);
        v.bitwidth(400);
        EXPECT_EQ(printed(v), printed(from_words(400, {3})));
        EXPECT_FALSE(shelf_of(100).HasRoom());
    });
}

TEST_F(StockOfAThread, TakesTheArraysOfAValueFromAnotherThread) {
    std::optional<KVAL_UINTEGER> here(std::in_place, 3U, 1000U);
    std::thread([&here] {
        here.reset();  // the first that this thread has to do with values
        EXPECT_EQ(kept(1000), 1U);
        here.emplace(5U, 1000U);
        EXPECT_EQ(kept(1000), 0U);
    }).join();
    EXPECT_EQ(printed(*here), printed(from_words(1000, {5})));
}

// Keys are ended in the order of their making: this one after the stock's.
TEST_F(StockOfAThread, ServesValuesThatOutliveIt) {
    static pthread_key_t key;
    static bool right = false;
    ASSERT_EQ(pthread_key_create(&key,
                                 [](void* last) {
                                     const std::unique_ptr<KVAL_UINTEGER> value(static_cast<KVAL_UINTEGER*>(last));
                                     const KVAL_UINTEGER sum = *value + *value;
                                     right = sum == 6U && kept(150) == 0 && !shelf_of(150).HasRoom();
                                 }),
              0);
    in_a_thread([] { EXPECT_EQ(pthread_setspecific(key, std::make_unique<KVAL_UINTEGER>(3, 150).release()), 0); });
    EXPECT_TRUE(right);
    pthread_key_delete(key);
}

#ifdef KVAL_KEPT_ARRAYS

// How kept_arrays.cpp ends in an environment of its own.
int kept_arrays(const std::string& preloaded, const std::string& mode) {
    const std::string command = "LD_PRELOAD='" + preloaded + "' '" KVAL_KEPT_ARRAYS "' " + mode + " 2>/dev/null";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

constexpr int kKept = 0;
constexpr int kNothingKept = 3;

TEST(StockOfAProgram, IsThereUnlessAToolWatchesEveryArray) {
    EXPECT_EQ(kept_arrays("", "plain"), kKept);
    EXPECT_EQ(kept_arrays("libm.so.6", "plain"), kKept);
    EXPECT_EQ(kept_arrays("/no/vgpreload_memcheck-amd64-linux.so", "plain"), kNothingKept);
    EXPECT_EQ(kept_arrays(KVAL_ASAN_STAND_IN, "plain"), kNothingKept);
}

TEST(StockOfAProgram, IsDoneWithoutWhereTheSystemRefusesIt) {
    EXPECT_EQ(kept_arrays("", "no-key"), kNothingKept);
    EXPECT_EQ(kept_arrays("", "no-memory-for-the-stock"), kNothingKept);
    EXPECT_EQ(kept_arrays("", "no-memory-for-the-key"), kNothingKept);
}

TEST(StockOfAProgram, KeepsWhatThereIsWhereThereIsNoMemoryForMore) {
    EXPECT_EQ(kept_arrays("", "no-memory-for-more"), kKept);
}

#endif

}  // namespace
