// The inputs of the fuzz targets once more, without a fuzzer: rows that scripts/fuzz-row made of findings, and the
// checked-in corpus.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/generator_calls.h"
#include "fuzz/interpret.h"
#include "fuzz/text_case.h"
#include "support/program.h"

namespace {

using fuzz::Call;
using fuzz::TextCase;
using twin::Ask;
using twin::Operands;
using twin::Text;

// ---- findings ----

struct Step {
    const char* action;
    Operands operands;  // target, left, right, number, word, text, what to ask for
};

struct Program {
    const char* name;
    std::vector<Step> steps;
};

const std::vector<Program>& programs() {
    static const std::vector<Program> rows = {
        {"a borrow goes on where a word equals the compact right operand",
         {
             {"-= number", {15, 15, 15, 2147483648, 0, "", Ask::BinText}},
             {"-, replacing", {8, 15, 0, 0, 0, "", Ask::AsBefore}},
         }},
        {"a sum that carries out of every word",
         {
             {"= number", {7, 0, 0, 0, 0, "", Ask::AsBefore}},
             {"--", {7, 0, 0, 0, 0, "", Ask::AsBefore}},
             {"+, replacing", {0, 7, 7, 0, 0, "", Ask::HexText}},
         }},
    };
    return rows;
}

const std::vector<TextCase>& texts() {
    static const std::vector<TextCase> rows = {
        {{40, {0x89ABCDEF, 0x12}, {0xF0, 0}, "XL", Text::Binary}, false, Text::Hexadecimal, false, "0x12345 -7"},
    };
    return rows;
}

const std::vector<std::vector<Call>>& streams() {
    static const std::vector<std::vector<Call>> rows = {
        {
            {"new buffer", 1, 64, 3},
            {"initstate", 1, 42, 32},
            {"random", 0, 0, 20},
            {"setstate", 0, 0, 0},
        },
    };
    return rows;
}

TEST(Regression, Programs) {
    for (const Program& program : programs()) {
        twin::Machine machine(fuzz::first_contents());
        for (const Step& step : program.steps) {
            const twin::Action& action = twin::action_named(step.action);
            ASSERT_FALSE(is_too_wide(machine, action, step.operands)) << program.name << ", " << step.action;
            ASSERT_TRUE(run(machine, action, step.operands)) << program.name;
        }
        EXPECT_TRUE(same(machine, Text::Hexadecimal)) << program.name;
    }
}

TEST(Regression, Texts) {
    for (const TextCase& test : texts()) EXPECT_TRUE(run(test));
}

TEST(Regression, GeneratorCalls) {
    for (const std::vector<Call>& calls : streams()) {
        fuzz::Streams generator;
        for (const Call& call : calls) {
            ASSERT_TRUE(generator.is_allowed(call)) << call.name;
            ASSERT_TRUE(generator.run(call));
        }
    }
}

// ---- the interpreters ----

TEST(Regression, ActionsHaveTheirOwnNames) {
    for (const twin::Action& action : twin::actions()) EXPECT_EQ(&twin::action_named(action.name), &action);
}

TEST(Regression, AnActionIsOneByteOfAnInput) { EXPECT_LE(twin::actions().size(), 256u); }

// ---- the corpus ----

using Bytes = std::vector<std::uint8_t>;

std::vector<std::pair<std::string, Bytes>> corpus_of(const std::string& target) {
    std::vector<std::pair<std::string, Bytes>> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(FUZZ_CORPUS) / target)) {
        std::ifstream file(entry.path(), std::ios::binary);
        inputs.emplace_back(entry.path().filename().string(),
                            Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
    }
    return inputs;
}

void replay_corpus(const std::string& name, fuzz::Target& target) {
    const auto inputs = corpus_of(name);
    EXPECT_GT(inputs.size(), 20u) << "in " << FUZZ_CORPUS;
    for (const auto& [file, bytes] : inputs) {
        EXPECT_TRUE(target(bytes.data(), bytes.size(), nullptr)) << "in " << FUZZ_CORPUS << '/' << name << '/' << file;
    }
}

TEST(Corpus, Programs) { replay_corpus("program", fuzz::run_program); }
TEST(Corpus, Texts) { replay_corpus("text", fuzz::run_text); }
TEST(Corpus, GeneratorCalls) { replay_corpus("generator", fuzz::run_generator); }

// The corpus is there to reach everything: what its programs leave out would be missing in plain builds too.
TEST(Corpus, ProgramsUseEveryAction) {
    std::ostringstream told;
    for (const auto& [file, bytes] : corpus_of("program"))
        EXPECT_TRUE(fuzz::run_program(bytes.data(), bytes.size(), &told));
    const std::string rows = told.str();
    for (const twin::Action& action : twin::actions()) {
        EXPECT_NE(rows.find("{\"" + action.name + "\", {"), std::string::npos) << action.name;
    }
}

}  // namespace
