// Tests of values in standard containers, wrappers and algorithms: which of them carry a value's width along, and which
// assign to live elements and so keep the width in place. Sorting, rotating and vectors: tests/unit/move_test.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <queue>
#include <random>
#include <set>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>
#include <vector>

#include "../unit/unit_support.h"
#include "kval.h"
#include "kval/hash.h"

namespace {

using Texts = std::vector<std::string>;

// What a moved-from value reads as.
const char* const kMovedFrom = "0 bits";

KVAL_UINTEGER compact() { return KVAL_UINTEGER(0x5AU, 8U); }
KVAL_UINTEGER wide() { return marked(from_words(70, {1, 2, 3}, {4, 5, 6}, true), "Z"); }

/// Values of both forms and of many widths, out of order: the number of each is its place.
std::vector<KVAL_UINTEGER> mixed(unsigned count) {
    std::vector<KVAL_UINTEGER> values;
    for (unsigned i = 0; i < count; ++i) {
        values.push_back(from_words(9 + 23 * (i % 5), {i}, {i & 3}, i % 3 == 0));
    }
    return values;
}

template <class Range>
Texts all_printed(const Range& values) {
    Texts texts;
    for (const KVAL_UINTEGER& value : values) {
        texts.push_back(printed(value));
    }
    return texts;
}

bool is_odd(const KVAL_UINTEGER& v) { return v.bit(0) == 1; }

// ---- swapping ----

static_assert(std::is_nothrow_swappable_v<KVAL_SINTEGER>);
static_assert(!std::is_swappable_with_v<KVAL_UINTEGER&, KVAL_SINTEGER&>, "the widths and signs of both would change");
static_assert(!std::is_swappable_with_v<KVAL_SINTEGER&, KVAL_UINTEGER&>);
static_assert(!std::is_default_constructible_v<KVAL_UINTEGER>, "a value has a width");

TEST(Swapping, SwapRangesCarriesWidthsAlong) {
    std::vector<KVAL_UINTEGER> a = mixed(20);
    std::vector<KVAL_UINTEGER> b = mixed(23);
    b.erase(b.begin() + 20, b.end());
    std::reverse(b.begin(), b.end());
    const Texts of_a = all_printed(a);
    const Texts of_b = all_printed(b);
    std::swap_ranges(a.begin(), a.end(), b.begin());
    EXPECT_EQ(all_printed(a), of_b);
    EXPECT_EQ(all_printed(b), of_a);
}

// Each swaps its elements by the swap that their type offers.
TEST(Swapping, ArraysPairsAndOptionalsCarryWidthsAlong) {
    std::array<KVAL_UINTEGER, 2> a{compact(), wide()};
    std::array<KVAL_UINTEGER, 2> b{wide(), KVAL_UINTEGER(1U, 33U)};
    swap(a, b);
    EXPECT_EQ(all_printed(a), (Texts{printed(wide()), "33 bits 00000000 00000001"}));
    EXPECT_EQ(all_printed(b), (Texts{printed(compact()), printed(wide())}));

    std::pair<KVAL_UINTEGER, KVAL_SINTEGER> p(compact(), KVAL_SINTEGER(-1, 4));
    std::pair<KVAL_UINTEGER, KVAL_SINTEGER> q(wide(), KVAL_SINTEGER(-2, 40));
    swap(p, q);
    EXPECT_EQ(printed(p.first), printed(wide()));
    EXPECT_EQ(printed(p.second), printed(KVAL_SINTEGER(-2, 40)));
    EXPECT_EQ(printed(q.second), "4 bits 0000000F");

    std::optional<KVAL_UINTEGER> here(compact());
    std::optional<KVAL_UINTEGER> there(wide());
    std::optional<KVAL_UINTEGER> none;
    swap(here, there);
    EXPECT_EQ(printed(here.value()), printed(wide()));
    EXPECT_EQ(printed(there.value()), printed(compact()));
    swap(here, none);
    EXPECT_FALSE(here.has_value());
    EXPECT_EQ(printed(none.value()), printed(wide()));
}

// ---- algorithms that move elements among each other ----

// Each runs on values of many widths beside their texts, which follow the same order.
template <class Run>
void expect_same_order(const char* name, Run run) {
    SCOPED_TRACE(name);
    for (const unsigned count : {1U, 2U, 15U, 16U, 17U, 200U}) {
        std::vector<KVAL_UINTEGER> values = mixed(count);
        std::vector<std::size_t> places(count);
        std::iota(places.begin(), places.end(), std::size_t{0});
        const Texts texts = all_printed(values);
        run(values, [](const KVAL_UINTEGER& v) { return v.uint(); });
        run(places, [](std::size_t place) { return static_cast<unsigned>(place); });
        Texts expected;
        for (const std::size_t place : places) {
            expected.push_back(texts[place]);
        }
        EXPECT_EQ(all_printed(values), expected) << count << " elements";
    }
}

TEST(Algorithms, ThatReorderCarryWidthsAlong) {
    expect_same_order("partition", [](auto& range, auto number) {
        std::partition(range.begin(), range.end(), [&](const auto& v) { return number(v) % 3 == 0; });
    });
    expect_same_order("stable_partition", [](auto& range, auto number) {
        std::stable_partition(range.begin(), range.end(), [&](const auto& v) { return number(v) % 3 == 0; });
    });
    expect_same_order("shuffle", [](auto& range, auto) { std::shuffle(range.begin(), range.end(), std::mt19937(1)); });
    const auto below = [](auto number) {
        return [number](const auto& l, const auto& r) { return number(l) * 37 % 211 < number(r) * 37 % 211; };
    };
    expect_same_order("nth_element", [&](auto& range, auto number) {
        std::nth_element(range.begin(), range.begin() + static_cast<std::ptrdiff_t>(range.size() / 2), range.end(),
                         below(number));
    });
    expect_same_order("partial_sort", [&](auto& range, auto number) {
        std::partial_sort(range.begin(), range.begin() + static_cast<std::ptrdiff_t>(range.size() / 2), range.end(),
                          below(number));
    });
    expect_same_order("inplace_merge", [](auto& range, auto number) {
        const auto odd_first = [&](const auto& l, const auto& r) { return number(l) % 2 > number(r) % 2; };
        const auto middle = range.begin() + static_cast<std::ptrdiff_t>(range.size() / 2);
        std::stable_sort(range.begin(), middle, odd_first);
        std::stable_sort(middle, range.end(), odd_first);
        std::inplace_merge(range.begin(), middle, range.end(), odd_first);
    });
    expect_same_order("sort_heap", [&](auto& range, auto number) {
        std::make_heap(range.begin(), range.end(), below(number));
        std::sort_heap(range.begin(), range.end(), below(number));
    });
    expect_same_order("next_permutation", [&](auto& range, auto number) {
        for (int i = 0; i < 50; ++i) {
            std::next_permutation(range.begin(), range.end(), below(number));
        }
    });
}

TEST(Algorithms, MoveIteratorsLeaveMovedFromElementsBehind) {
    std::vector<KVAL_UINTEGER> source{compact(), wide()};
    const std::vector<KVAL_UINTEGER> target(std::make_move_iterator(source.begin()),
                                            std::make_move_iterator(source.end()));
    EXPECT_EQ(all_printed(target), (Texts{printed(compact()), printed(wide())}));
    EXPECT_EQ(all_printed(source), (Texts{kMovedFrom, kMovedFrom}));
    source[0] = wide();
    source[1] = compact();
    EXPECT_EQ(all_printed(source), (Texts{printed(wide()), printed(compact())}));
}

// ---- algorithms that assign to live elements ----

// 8-bit 11, 12-bit 222, 16-bit 3333, 40-bit 44.
std::vector<KVAL_UINTEGER> four_widths() {
    std::vector<KVAL_UINTEGER> values;
    values.emplace_back(0x11U, 8U);
    values.emplace_back(0x222U, 12U);
    values.emplace_back(0x3333U, 16U);
    values.emplace_back(0x44U, 40U);
    return values;
}

TEST(Algorithms, RemoveIfOnMixedWidthsTruncatesToTheWidthsInPlace_Required) {
    std::vector<KVAL_UINTEGER> values = four_widths();
    values.erase(std::remove_if(values.begin(), values.end(), is_odd), values.end());
    EXPECT_EQ(all_printed(values), (Texts{"8 bits 00000022", "12 bits 00000044"}));
}

TEST(Algorithms, RemoveIfOnEqualWidthsClosesTheGaps) {
    std::vector<KVAL_UINTEGER> values;
    for (unsigned i = 0; i < 6; ++i) {
        values.push_back(from_words(40, {i, i}, {i & 2}));
    }
    values.erase(std::remove_if(values.begin(), values.end(), is_odd), values.end());
    EXPECT_EQ(all_printed(values), (Texts{"40 bits 00000000 00000000", "40 bits 00000002 00000002 x 00000000 00000002",
                                          "40 bits 00000004 00000004"}));
}

TEST(Algorithms, UniqueOnMixedWidthsTruncatesToTheWidthsInPlace_Required) {
    std::vector<KVAL_UINTEGER> values = four_widths();
    values.insert(values.begin(), KVAL_UINTEGER(0x11U, 8U));
    values.erase(std::unique(values.begin(), values.end()), values.end());
    EXPECT_EQ(all_printed(values),
              (Texts{"8 bits 00000011", "8 bits 00000022", "12 bits 00000333", "16 bits 00000044"}));
}

#if __cplusplus >= 202002L
TEST(Algorithms, EraseIfAndShiftLeftOnMixedWidthsTruncateToTheWidthsInPlace_Required) {
    std::vector<KVAL_UINTEGER> values = four_widths();
    std::erase_if(values, is_odd);
    EXPECT_EQ(all_printed(values), (Texts{"8 bits 00000022", "12 bits 00000044"}));
    values = std::vector<KVAL_UINTEGER>(four_widths());
    std::shift_left(values.begin(), values.end(), 1);
    EXPECT_EQ(printed(values[0]), "8 bits 00000022");
    EXPECT_EQ(printed(values[2]), "16 bits 00000044");
}
#endif

// The way to erase from mixed widths: what goes is carried to the end first.
TEST(Algorithms, PartitioningOrRotatingBeforeErasingKeepsEveryElementWhole) {
    std::vector<KVAL_UINTEGER> values = four_widths();
    values.erase(std::stable_partition(values.begin(), values.end(), [](const auto& v) { return !is_odd(v); }),
                 values.end());
    EXPECT_EQ(all_printed(values), (Texts{"12 bits 00000222", "40 bits 00000000 00000044"}));

    values = four_widths();
    std::rotate(values.begin(), values.begin() + 1, values.end());
    values.pop_back();
    EXPECT_EQ(all_printed(values), (Texts{"12 bits 00000222", "16 bits 00003333", "40 bits 00000000 00000044"}));

    values = four_widths();
    swap(values.front(), values.back());
    values.pop_back();
    EXPECT_EQ(all_printed(values), (Texts{"40 bits 00000000 00000044", "12 bits 00000222", "16 bits 00003333"}));
}

TEST(Algorithms, CopyFillAndTransformIntoLiveElementsKeepTheirWidths_Required) {
    std::vector<KVAL_UINTEGER> values = four_widths();
    const std::vector<KVAL_UINTEGER> sources{KVAL_UINTEGER(0xABCU, 12U), KVAL_UINTEGER(0xABCDU, 16U)};
    std::copy(sources.begin(), sources.end(), values.begin());
    EXPECT_EQ(printed(values[0]), "8 bits 000000BC");
    EXPECT_EQ(printed(values[1]), "12 bits 00000BCD");

    std::vector<KVAL_UINTEGER> expiring = sources;
    std::move(expiring.begin(), expiring.end(), values.begin());
    EXPECT_EQ(printed(values[0]), "8 bits 000000BC");
    EXPECT_EQ(expiring[0].bitwidth(), 12U) << "the source stays alive";

    std::transform(values.begin(), values.end(), values.begin(), [](const auto& v) { return v + v; });
    EXPECT_EQ(all_printed(values),
              (Texts{"8 bits 00000078", "12 bits 0000079A", "16 bits 00006666", "40 bits 00000000 00000088"}));

    std::fill(values.begin(), values.end(), KVAL_UINTEGER(0xABCDEU, 20U));
    EXPECT_EQ(all_printed(values),
              (Texts{"8 bits 000000DE", "12 bits 00000CDE", "16 bits 0000BCDE", "40 bits 00000000 000ABCDE"}));
}

TEST(Algorithms, InsertersMakeNewElementsAndSoKeepWidths) {
    const std::vector<KVAL_UINTEGER> values = four_widths();
    std::vector<KVAL_UINTEGER> copies;
    std::remove_copy_if(values.begin(), values.end(), std::back_inserter(copies), is_odd);
    EXPECT_EQ(all_printed(copies), (Texts{"12 bits 00000222", "40 bits 00000000 00000044"}));
}

TEST(Algorithms, AccumulateKeepsTheWidthOfItsInitialValue_Required) {
    const std::vector<KVAL_UINTEGER> values(3, KVAL_UINTEGER(0xFFU, 8U));
    EXPECT_EQ(printed(std::accumulate(values.begin(), values.end(), KVAL_UINTEGER(0U, 8U))), "8 bits 000000FD");
    EXPECT_EQ(printed(std::accumulate(values.begin(), values.end(), KVAL_UINTEGER(0U, 16U))), "16 bits 000002FD");
}

// ---- sequences ----

template <class Sequence>
void expect_copy_assignment_keeps_widths() {
    Sequence target{KVAL_UINTEGER(0U, 4U), KVAL_UINTEGER(0U, 8U)};
    const Sequence source{KVAL_UINTEGER(0xABU, 8U), KVAL_UINTEGER(0xABU, 40U)};
    target = source;
    EXPECT_EQ(all_printed(target), (Texts{"4 bits 0000000B", "8 bits 000000AB"}));
}

TEST(Sequences, CopyAssignmentKeepsTheWidthsOfTheElementsThatAreThere_Required) {
    expect_copy_assignment_keeps_widths<std::vector<KVAL_UINTEGER>>();
    expect_copy_assignment_keeps_widths<std::deque<KVAL_UINTEGER>>();
    expect_copy_assignment_keeps_widths<std::list<KVAL_UINTEGER>>();
    expect_copy_assignment_keeps_widths<std::array<KVAL_UINTEGER, 2>>();
}

TEST(Vector, MoveAssignmentAndSwapTakeTheElementsWhole) {
    std::vector<KVAL_UINTEGER> target{KVAL_UINTEGER(0U, 4U), KVAL_UINTEGER(0U, 8U)};
    const std::vector<KVAL_UINTEGER> source = four_widths();
    target = std::vector<KVAL_UINTEGER>(source);
    EXPECT_EQ(all_printed(target), all_printed(source));
    std::vector<KVAL_UINTEGER> other{wide()};
    target.swap(other);
    EXPECT_EQ(all_printed(other), all_printed(source));
    EXPECT_EQ(all_printed(target), Texts{printed(wide())});
}

TEST(Deque, GrowsAndInsertsWholeAndErasesInPlace_Required) {
    const std::vector<KVAL_UINTEGER> source = four_widths();
    std::deque<KVAL_UINTEGER> values(source.begin(), source.end());
    values.push_front(wide());
    for (const std::ptrdiff_t at : {2, 3}) {
        values.insert(values.begin() + at, compact());
    }
    EXPECT_EQ(all_printed(values), (Texts{printed(wide()), "8 bits 00000011", printed(compact()), printed(compact()),
                                          "12 bits 00000222", "16 bits 00003333", "40 bits 00000000 00000044"}));
    values.pop_front();
    values.erase(values.begin() + 4);
    EXPECT_EQ(all_printed(values), (Texts{"8 bits 00000011", printed(compact()), printed(compact()), "12 bits 00000222",
                                          "16 bits 00000044"}));
}

TEST(List, ErasesSortsAndMergesWhole) {
    const std::vector<KVAL_UINTEGER> source = four_widths();
    std::list<KVAL_UINTEGER> values(source.begin(), source.end());
    values.remove_if(is_odd);
    EXPECT_EQ(all_printed(values), (Texts{"12 bits 00000222", "40 bits 00000000 00000044"}));
    values.sort();
    std::list<KVAL_UINTEGER> more{KVAL_UINTEGER(0x45U, 7U)};
    values.merge(more);
    EXPECT_EQ(all_printed(values), (Texts{"40 bits 00000000 00000044", "7 bits 00000045", "12 bits 00000222"}));
}

TEST(PriorityQueue, GivesValuesBackWholeAndInOrder) {
    std::priority_queue<KVAL_UINTEGER> queue;
    const unsigned count = 50;
    for (unsigned i = 0; i < count; ++i) {
        const unsigned number = i * 37 % count;  // each once
        queue.push(from_words(6 + 23 * (number % 4), {number}, {number & 5}));
    }
    for (unsigned number = count; number-- > 0;) {
        EXPECT_EQ(printed(queue.top()), printed(from_words(6 + 23 * (number % 4), {number}, {number & 5})));
        queue.pop();
    }
    EXPECT_TRUE(queue.empty());
}

// ---- wrappers ----

TEST(Optional, AssignmentKeepsTheWidthOfAValueThatIsThere_Required) {
    std::optional<KVAL_UINTEGER> value;
    value = KVAL_UINTEGER(0x1A5U, 12U);
    EXPECT_EQ(printed(value.value()), "12 bits 000001A5");
    value = KVAL_UINTEGER(0xABCDEU, 20U);
    EXPECT_EQ(printed(value.value()), "12 bits 00000CDE");
    value.emplace(0xABCDEU, 20U);
    EXPECT_EQ(printed(value.value()), "20 bits 000ABCDE");
    value.reset();
    value = wide();
    EXPECT_EQ(printed(value.value()), printed(wide()));
}

TEST(Variant, AssignmentKeepsTheWidthOfTheSameAlternative_Required) {
    std::variant<std::monostate, KVAL_UINTEGER, KVAL_SINTEGER> value;
    value = KVAL_UINTEGER(0x1A5U, 12U);
    value = KVAL_UINTEGER(0xABCDEU, 20U);
    EXPECT_EQ(printed(std::get<KVAL_UINTEGER>(value)), "12 bits 00000CDE");
    value = KVAL_SINTEGER(-1, 20U);
    EXPECT_EQ(printed(std::get<KVAL_SINTEGER>(value)), "20 bits 000FFFFF");
    value.emplace<KVAL_SINTEGER>(-1, 8U);
    EXPECT_EQ(printed(std::get<KVAL_SINTEGER>(value)), "8 bits 000000FF");
}

TEST(Wrappers, PairsAndFunctionResultsPassValuesThroughWhole) {
    const auto split = [](const KVAL_UINTEGER& v) { return std::make_pair(v >> 4U, v & KVAL_UINTEGER(0xFU, 4U)); };
    const auto [high, low] = split(KVAL_UINTEGER(0x1A5U, 12U));
    EXPECT_EQ(printed(high), "8 bits 0000001A");
    EXPECT_EQ(printed(low), "12 bits 00000005");

    const auto owned = std::make_unique<KVAL_UINTEGER>(wide());
    EXPECT_EQ(printed(*owned), printed(wide()));
}

// ---- ordered containers ----

TEST(Set, OrdersByNumberWhateverTheWidth) {
    std::set<KVAL_UINTEGER> values;
    values.insert(from_words(100, {0, 1}));
    values.insert(KVAL_UINTEGER(0xFFFFFFFFU, 32U));
    values.insert(KVAL_UINTEGER(3U, 70U));
    values.insert(KVAL_UINTEGER(1U, 1U));
    EXPECT_FALSE(values.insert(KVAL_UINTEGER(3U, 2U)).second) << "the same number";
    EXPECT_EQ(all_printed(values), (Texts{"1 bits 00000001", "70 bits 00000000 00000000 00000003", "32 bits FFFFFFFF",
                                          "100 bits 00000000 00000000 00000001 00000000"}));
    EXPECT_EQ(values.count(KVAL_UINTEGER(1U, 50U)), 1U);
}

// Ordering does not see X bits and flags, so neither does a set or map.
TEST(Set, TakesValuesThatDifferInXAndFlagsOnlyForOne_Required) {
    std::set<KVAL_UINTEGER> values{KVAL_UINTEGER(5U, 8U)};
    EXPECT_FALSE(values.insert(from_words(8, {5}, {4}, true)).second);
    EXPECT_FALSE(values.insert(marked(KVAL_UINTEGER(5U, 8U), "Z")).second);
    EXPECT_EQ(all_printed(values), Texts{"8 bits 00000005"});
}

TEST(Set, OrdersSignedValuesAsNumbers) {
    std::set<KVAL_SINTEGER> values;
    for (const int number : {5, -1, 0, -128, 127}) {
        values.insert(KVAL_SINTEGER(number, 8));
    }
    values.insert(KVAL_SINTEGER(-5, 4));
    values.insert(KVAL_SINTEGER(-300, 16));
    EXPECT_FALSE(values.insert(KVAL_SINTEGER(-1, 4)).second) << "the same number";
    std::vector<int> numbers;
    for (const KVAL_SINTEGER& value : values) {
        numbers.push_back(value.signed_value());
    }
    EXPECT_EQ(numbers, (std::vector<int>{-300, -128, -5, -1, 0, 5, 127}));
}

TEST(Map, MappedValuesKeepTheirWidthOnAssignment_Required) {
    std::map<KVAL_UINTEGER, KVAL_UINTEGER> memory;
    memory.try_emplace(KVAL_UINTEGER(0x40U, 16U), 0x11U, 8U);
    memory.insert_or_assign(KVAL_UINTEGER(0x40U, 16U), KVAL_UINTEGER(0xABCU, 12U));
    EXPECT_EQ(printed(memory.at(KVAL_UINTEGER(0x40U, 40U))), "8 bits 000000BC");
    memory.insert_or_assign(KVAL_UINTEGER(0x44U, 16U), KVAL_UINTEGER(0xABCU, 12U));
    EXPECT_EQ(printed(memory.at(KVAL_UINTEGER(0x44U, 16U))), "12 bits 00000ABC");
    EXPECT_EQ(memory.erase(KVAL_UINTEGER(0x40U, 7U)), 1U);
    EXPECT_EQ(printed(memory.begin()->first), "16 bits 00000044");
}

// ---- unordered containers, by kval/hash.h ----

TEST(UnorderedSet, KeepsWhatIdentityTellsApart) {
    std::unordered_set<KVAL_UINTEGER> values;
    EXPECT_TRUE(values.insert(KVAL_UINTEGER(5U, 8U)).second);
    EXPECT_FALSE(values.insert(KVAL_UINTEGER(5U, 100U)).second) << "the width does not count";
    EXPECT_TRUE(values.insert(from_words(8, {5}, {4}, true)).second) << "X bits do";
    EXPECT_TRUE(values.insert(marked(KVAL_UINTEGER(5U, 8U), "Z")).second) << "flags do";
    EXPECT_EQ(values.size(), 3U);
    EXPECT_EQ(values.count(from_words(40, {5}, {4}, true)), 1U);
}

TEST(UnorderedMap, FindsEveryKeyInAnyWidthThatHoldsIt) {
    std::unordered_map<KVAL_UINTEGER, unsigned> places;
    const std::vector<KVAL_UINTEGER> keys = mixed(200);
    for (unsigned i = 0; i < keys.size(); ++i) {
        places.try_emplace(keys[i], i);
    }
    for (const KVAL_UINTEGER& key : keys) {
        const auto found = places.find(KVAL_UINTEGER(key).bitwidth(300));
        ASSERT_NE(found, places.end()) << printed(key);
        EXPECT_EQ(found->first, key);
    }
    for (const KVAL_UINTEGER& key : keys) {
        places.erase(key);
    }
    EXPECT_TRUE(places.empty());
}

TEST(UnorderedSet, TakesSignedValuesOfOneNumberForOne) {
    std::unordered_set<KVAL_SINTEGER> values;
    EXPECT_TRUE(values.insert(KVAL_SINTEGER(-1, 8)).second);
    EXPECT_FALSE(values.insert(KVAL_SINTEGER(-1, 4)).second);
    EXPECT_FALSE(values.insert(KVAL_SINTEGER(-1, 100)).second);
    EXPECT_TRUE(values.insert(KVAL_SINTEGER(15, 8)).second);
    EXPECT_FALSE(values.insert(KVAL_SINTEGER(15, 40)).second);
    EXPECT_EQ(values.size(), 2U);
}

}  // namespace
