// Runs every operation on arrays hard against an unmapped page: nothing before or behind them is read or written.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "operations.h"
#include "page_heap.h"

namespace {

using page_heap::Placement;
using Widths = std::vector<unsigned>;

class PageGuard : public testing::TestWithParam<Theme> {
  protected:
    static void run_operations(const Widths& left_widths, const Widths& right_widths) {
        for_each_operation(GetParam(), left_widths, right_widths,
                           [](const Operation& operation, auto prepare, const std::string& name) {
                               const auto run_at = [&](Placement placement) {
                                   page_heap::place_at(placement);
                                   const page_heap::Task task(name.c_str());
                                   Operands operands = prepare();
                                   const page_heap::ReleasedFaults released_faults;
                                   operation.run(operands);
                                   return observe(operands);
                               };
                               EXPECT_EQ(run_at(Placement::End), run_at(Placement::Beginning)) << name;
                           });
    }
};

Widths every_width_from_2_to_5_words() {
    Widths widths(128);
    std::iota(widths.begin(), widths.end(), 33U);
    return widths;
}

const Widths kSomeWidths{1, 32, 33, 64, 65, 97, 160};

TEST_P(PageGuard, stays_inside_the_arrays_at_every_left_width) {
    run_operations(every_width_from_2_to_5_words(), kSomeWidths);
}

TEST_P(PageGuard, stays_inside_the_arrays_at_every_right_width) {
    run_operations(kSomeWidths, every_width_from_2_to_5_words());
}

TEST_P(PageGuard, stays_inside_the_arrays_at_boundary_widths) {
    const Widths widths{31, 32, 33, 63, 64, 65, 95, 96, 97, 127, 128, 129, 1023, 1024, 1025};
    run_operations(widths, widths);
}

INSTANTIATE_TEST_SUITE_P(, PageGuard, testing::ValuesIn(all_themes()),
                         [](const auto& instance) { return instance.param.name; });

// What a caller hands over stands on pages of its own too.

template <typename Test>
void at_both_placements(Test test) {
    for (const Placement placement : {Placement::End, Placement::Beginning}) {
        page_heap::place_at(placement);
        test();
    }
}

TEST(PageGuardOfCallers, parsing_reads_the_text_up_to_its_end) {
    for (std::size_t length = 0; length <= 70; ++length) {
        const page_heap::Task task("a parse");
        at_both_placements([length] {
            const std::unique_ptr<char[]> text(new char[length + 1]);
            std::memset(text.get(), '1', length);
            text[length] = '\0';
            KVAL_UINTEGER binary(0, 1);
            binary.set_value_from_bin_string(text.get());
            EXPECT_STREQ(binary.as_bin_string(), text.get());
            KVAL_UINTEGER hexadecimal(0, 1);
            hexadecimal.set_value_from_hex_string(text.get());
            EXPECT_STREQ(hexadecimal.as_hex_string(), text.get());
        });
    }
}

TEST(PageGuardOfCallers, one_at_a_time_reads_len_bytes) {
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    for (std::size_t length = 0; length <= letters.size(); ++length) {
        const page_heap::Task task("one_at_a_time");
        at_both_placements([&] {
            const std::unique_ptr<char[]> key(new char[length]);
            letters.copy(key.get(), length);
            const int size = static_cast<int>(length);
            EXPECT_EQ(one_at_a_time(key.get(), size), one_at_a_time(letters.c_str(), size));
        });
    }
}

TEST(PageGuardOfCallers, a_generator_stays_inside_the_part_of_its_buffer_that_it_uses) {
    const std::pair<unsigned long, std::size_t> sizes[] = {{8, 16}, {32, 64}, {64, 128}, {128, 256}, {256, 512}};
    for (const auto& [selected, used] : sizes) {
        const page_heap::Task task("a generator");
        std::vector<std::vector<std::int64_t>> drawn;
        at_both_placements([&, bytes = selected, size = used] {
            const std::unique_ptr<char[]> buffer(new char[size]);
            void* standard = kval_initstate(7, buffer.get(), bytes);
            std::vector<std::int64_t> numbers;
            for (int i = 0; i < 200; ++i) numbers.push_back(kval_random());
            kval_srandom(8);
            for (int i = 0; i < 200; ++i) numbers.push_back(kval_random());
            kval_setstate(standard);
            drawn.push_back(numbers);
        });
        EXPECT_EQ(drawn[0], drawn[1]);
    }
}

}  // namespace
