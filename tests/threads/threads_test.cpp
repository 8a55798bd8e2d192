// Several threads at once: on values of their own, on sources that nobody changes, and in turns at the generator.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "random/draw.h"
#include "support/agree.h"

namespace {

using twin::Text;
using twin::Twin;

constexpr unsigned kThreads = 6;
constexpr unsigned kRounds = 300;

// What a thread found wrong first.
class Findings {
  public:
    void expect(const testing::AssertionResult& result) {
        if (!result && first_.empty()) first_ = result.message();
    }
    void expect(bool holds, const char* otherwise) {
        if (!holds && first_.empty()) first_ = otherwise;
    }
    const std::string& first() const { return first_; }

  private:
    std::string first_;
};

// Calls work(number, findings) in threads that start together.
void in_threads(const std::function<void(unsigned, Findings&)>& work) {
    std::atomic<bool> started{false};
    std::vector<Findings> findings(kThreads);
    std::vector<std::thread> threads;
    for (unsigned number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] {
            while (!started) std::this_thread::yield();
            work(number, findings[number]);
        });
    }
    started = true;
    for (std::thread& thread : threads) thread.join();
    for (const Findings& of_one : findings) EXPECT_EQ(of_one.first(), "");
}

unsigned draw_width(Draw& draw) { return 1 + draw.below(draw.once_in(3) ? 32 : 160); }

// Every operation that leaves its operands alone, and needs no text of them.
void read(const Twin& v, Draw& draw, Findings& findings) {
    const Text ask = draw_kind(draw);
    findings.expect(same_content(v));
    for (const twin::Derived& operation : twin::derived_values()) {
        findings.expect(agree(operation, v, draw_number(draw, operation.argument, v.model), ask));
    }
    for (const twin::Query& operation : twin::queries()) {
        findings.expect(agree(operation, v, draw_number(draw, operation.argument, v.model)));
    }
}

void read(const Twin& l, const Twin& r, Draw& draw, Findings& findings) {
    const Text ask = draw_kind(draw);
    for (const twin::Binary& operation : twin::binary_operations()) findings.expect(agree(operation, l, r, ask));
    for (const twin::Relation& operation : twin::relations()) findings.expect(agree(operation, l, r));
}

// Changes copies of the left operand, from the right one.
void change(const Twin& l, const Twin& r, Draw& draw, Findings& findings) {
    const Text ask = draw_kind(draw);
    for (const twin::InPlace& operation : twin::in_place_operations()) {
        findings.expect(agree(operation, l, r, ask));
        findings.expect(agree_on_itself(operation, l, ask));
    }
    for (const twin::Change& operation : twin::changes()) {
        findings.expect(agree(operation, l, draw_number(draw, operation.argument, l.model), ask));
    }
}

// What is not in the table of operations.
void swap_and_invert(unsigned width, Findings& findings) {
    KVAL_UINTEGER zero(0, width);
    KVAL_UINTEGER inverted(0, width);
    inverted.randomize(static_cast<int>(width));
    swap(zero, inverted);
    findings.expect(zero == ~inverted && inverted.is_zero(), "swap, or randomize of all bits");
}

TEST(Threads, work_on_values_of_their_own) {
    in_threads([](unsigned number, Findings& findings) {
        Draw draw(number);
        for (unsigned round = 0; round < kRounds; ++round) {
            Twin l(draw_content(draw, draw_width(draw)));
            Twin r(draw_content(draw, draw_width(draw)));
            read(l, draw, findings);
            read(l, r, draw, findings);
            change(l, r, draw, findings);
            swap_and_invert(draw_width(draw), findings);
            findings.expect(same(l, draw_kind(draw)));
            findings.expect(same(r, draw_kind(draw)));
        }
    });
}

// Only the text of a shared source may not be asked for: that fills its cache.
TEST(Threads, share_sources_that_nobody_changes) {
    Draw draw_sources(1);
    for (unsigned round = 0; round < kRounds / 5; ++round) {
        Twin source(draw_content(draw_sources, draw_width(draw_sources)));
        const Twin other(draw_content(draw_sources, draw_width(draw_sources)));
        in_threads([&](unsigned number, Findings& findings) {
            Draw draw(round * kThreads + number);
            const Twin own(draw_content(draw, draw_width(draw)));
            read(source, draw, findings);
            read(source, other, draw, findings);
            read(source, source, draw, findings);
            read(source, own, draw, findings);
            read(own, source, draw, findings);
            change(own, source, draw, findings);
            change(source, other, draw, findings);
        });
        EXPECT_TRUE(same(source, draw_kind(draw_sources)));
    }
}

// The first of these throws come from all threads together: the texts must be there for every one of them.
TEST(Threads, throw_the_messages_of_divisions) {
    using Unsigned = KVAL_UINTEGER;
    using Signed = KVAL_SINTEGER;
    const struct {
        void (*divide)(const Unsigned& u, const Signed& s);
        const char* message;
    } divisions[] = {
        {[](const Unsigned& u, const Signed&) { u / u; },
         "KVAL_UINTEGER operator / only supports division between 32 bit KVAL_UINTEGERs"},
        {[](const Unsigned& u, const Signed&) { u % u; },
         "KVAL_UINTEGER operator % only supports division between 32 bit KVAL_UINTEGERs"},
        {[](const Unsigned&, const Signed& s) { s / s; },
         "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_UINTEGERs"},
        {[](const Unsigned&, const Signed& s) { s % s; },
         "KVAL_SINTEGER operator% only supports division between 32 bit KVAL_SINTEGERs"},
        {[](const Unsigned& u, const Signed& s) { u / s; },
         "KVAL_SINTEGER operator// only supports division between 32 bit KVAL_SINTEGERs"},
        {[](const Unsigned& u, const Signed&) { u.bit(u.bitwidth() + 1); },
         "KVAL_UINTEGER::bit() called with illegal bit_position"},
    };
    in_threads([&](unsigned number, Findings& findings) {
        const Unsigned u(number + 1, 33 + number);
        const Signed s(static_cast<int>(number) + 1, 33 + number);
        for (unsigned round = 0; round < kRounds; ++round) {
            for (const auto& division : divisions) {
                std::string thrown = "nothing";
                try {
                    division.divide(u, s);
                } catch (const char* message) {
                    thrown = message;
                }
                findings.expect(thrown == division.message, thrown.c_str());
            }
        }
    });
}

TEST(Threads, take_turns_at_the_generator) {
    kval_srandom(42);
    std::mutex turn;
    std::vector<unsigned> drawn;
    in_threads([&](unsigned, Findings&) {
        for (unsigned round = 0; round < kRounds; ++round) {
            KVAL_UINTEGER v(0, 64);
            const std::lock_guard<std::mutex> mine(turn);
            drawn.push_back(static_cast<unsigned>(kval_random()));
            v.randomize();
            drawn.push_back(v.get_uvalue_at(0));
            drawn.push_back(v.get_uvalue_at(1));
        }
    });
    // One number for every 32 bits, whoever draws it.
    std::vector<unsigned> drawn_alone;
    kval_srandom(42);
    while (drawn_alone.size() < std::size_t{3} * kThreads * kRounds) {
        drawn_alone.push_back(static_cast<unsigned>(kval_random()));
    }
    EXPECT_EQ(drawn, drawn_alone);
}

TEST(Threads, draw_from_streams_of_their_own_in_turns) {
    const auto draw_from_stream = [](unsigned seed, const std::function<void(const std::function<void()>&)>& in_turn) {
        unsigned char buffer[256];
        std::vector<std::int64_t> numbers;
        void* standard = nullptr;
        in_turn([&] {
            standard = kval_initstate(seed, buffer, 128);
            kval_setstate(standard);
        });
        for (unsigned round = 0; round < kRounds; ++round) {
            in_turn([&] {
                kval_setstate(buffer);
                numbers.push_back(kval_random());
                kval_setstate(standard);
            });
        }
        return numbers;
    };
    std::mutex turn;
    std::vector<std::vector<std::int64_t>> drawn(kThreads);
    in_threads([&](unsigned number, Findings&) {
        drawn[number] = draw_from_stream(number, [&turn](const std::function<void()>& draw) {
            const std::lock_guard<std::mutex> mine(turn);
            draw();
        });
    });
    for (unsigned number = 0; number < kThreads; ++number) {
        EXPECT_EQ(drawn[number], draw_from_stream(number, [](const std::function<void()>& draw) { draw(); }));
    }
}

}  // namespace
