// Running the operations of the table on both sides, thrown messages included.
#include "agree.h"

#include <sstream>
#include <string>
#include <utility>

namespace twin {

namespace {

// Runs the model, then the library, which compares: what the model throws the library must throw too, with the same
// words.
template <typename Model, typename Library>
testing::AssertionResult both(Model run_model, Library run_and_compare) {
    std::string required;
    try {
        run_model();
    } catch (const std::string& message) {
        required = message;
    }
    try {
        testing::AssertionResult result = run_and_compare();
        if (required.empty()) return result;
        return testing::AssertionFailure() << "  nothing thrown\n  required " << required;
    } catch (const char* thrown) {
        if (required == thrown) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "  thrown   " << thrown << "\n  required " << required;
    }
}

template <typename Answer>
testing::AssertionResult same_answer(Answer answer, Answer required) {
    if (answer == required) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "  answer   " << answer << "\n  required " << required;
}

// Runs both sides of an operation that changes `target` and returns it, and compares the contents.
template <typename Model, typename Library>
testing::AssertionResult changed(const Twin& target, Model run_model, Library run) {
    const testing::AssertionResult result = both(run_model, [&] {
        if (&run() == &target.value) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "  something else than the left operand was returned";
    });
    return result ? same_content(target) : result;
}

// Runs both sides of an operation that gives a new value, compares the contents, and moves the value into `target`.
template <typename Model, typename Library>
testing::AssertionResult replaced(Twin& target, Model run_model, Library run) {
    model::Value required;
    return both([&] { required = run_model(); },
                [&] {
                    KVAL_UINTEGER value = run();
                    const testing::AssertionResult result = same_content(value, required);
                    const KVAL_SINTEGER left_over(std::move(target.value));  // so that the width is taken over too
                    target.value = std::move(value);
                    target.model = std::move(required);
                    return result;
                });
}

// Assignment of a result is the unsigned one, whatever the operator.
KVAL_UINTEGER& as_unsigned(Twin& target) { return target.value; }

std::string operands(const Twin& l, const Twin& r) {
    return "  left     " + describe(l.model) + "\n  right    " + describe(r.model);
}

std::string operands(const Twin& v, unsigned number) {
    std::ostringstream out;
    out << "  value    " << describe(v.model) << "\n  number   " << number << std::hex << " = 0x" << number;
    return out.str();
}

// What a failing result shows above the difference: the operation and its operands.
testing::AssertionResult failed(const char* name, const std::string& operands, const testing::AssertionResult& result) {
    return testing::AssertionFailure() << '\n' << name << '\n' << operands << '\n' << result.message();
}

}  // namespace

testing::AssertionResult agree(const Binary& operation, const Twin& l, const Twin& r, Text ask) {
    model::Value required;
    const testing::AssertionResult result = both([&] { required = operation.model(l.model, r.model); },
                                                 [&] {
                                                     const KVAL_UINTEGER value = operation.library(l.value, r.value);
                                                     return same(value, required, ask);
                                                 });
    return result ? result : failed(operation.name, operands(l, r), result);
}

testing::AssertionResult agree(const Relation& operation, const Twin& l, const Twin& r) {
    const testing::AssertionResult result =
        same_answer(operation.library(l.value, r.value), operation.model(l.model, r.model));
    return result ? result : failed(operation.name, operands(l, r), result);
}

testing::AssertionResult agree(const InPlace& operation, const Twin& l, const Twin& r, Text ask) {
    Twin target = l;
    testing::AssertionResult result = apply(operation, target, r);
    if (result) result = same(target, ask);
    return result ? result : failed(operation.name, operands(l, r), result);
}

testing::AssertionResult agree_on_itself(const InPlace& operation, const Twin& v, Text ask) {
    Twin target = v;
    testing::AssertionResult result = apply(operation, target, target);
    if (result) result = same(target, ask);
    return result ? result : failed(operation.name, "  with itself " + describe(v.model), result);
}

testing::AssertionResult agree(const Derived& operation, const Twin& v, unsigned number, Text ask) {
    model::Value required = operation.model(v.model, number);
    const KVAL_UINTEGER value = operation.library(v.value, number);
    const testing::AssertionResult result = same(value, required, ask);
    return result ? result : failed(operation.name, operands(v, number), result);
}

testing::AssertionResult agree(const Query& operation, const Twin& v, unsigned number) {
    unsigned required = 0;
    const testing::AssertionResult result =
        both([&] { required = operation.model(v.model, number); },
             [&] { return same_answer(operation.library(v.value, number), required); });
    return result ? result : failed(operation.name, operands(v, number), result);
}

testing::AssertionResult agree(const Change& operation, const Twin& v, unsigned number, Text ask) {
    Twin target = v;
    testing::AssertionResult result = apply(operation, target, number);
    if (result) result = same(target, ask);
    return result ? result : failed(operation.name, operands(v, number), result);
}

testing::AssertionResult apply(const InPlace& operation, Twin& target, const Twin& other) {
    return changed(
        target, [&] { operation.model(target.model, other.model); },
        [&]() -> KVAL_UINTEGER& { return operation.library(target.value, other.value); });
}

testing::AssertionResult apply(const Change& operation, Twin& target, unsigned number) {
    return changed(
        target, [&] { operation.model(target.model, number); },
        [&]() -> KVAL_UINTEGER& { return operation.library(target.value, number); });
}

testing::AssertionResult apply(const Binary& operation, Twin& target, const Twin& l, const Twin& r) {
    return changed(
        target, [&] { model::assign(target.model, operation.model(l.model, r.model)); },
        [&]() -> KVAL_UINTEGER& { return as_unsigned(target) = operation.library(l.value, r.value); });
}

testing::AssertionResult apply(const Derived& operation, Twin& target, const Twin& v, unsigned number) {
    return changed(
        target, [&] { model::assign(target.model, operation.model(v.model, number)); },
        [&]() -> KVAL_UINTEGER& { return as_unsigned(target) = operation.library(v.value, number); });
}

testing::AssertionResult replace(const Binary& operation, Twin& target, const Twin& l, const Twin& r) {
    return replaced(
        target, [&] { return operation.model(l.model, r.model); }, [&] { return operation.library(l.value, r.value); });
}

testing::AssertionResult replace(const Derived& operation, Twin& target, const Twin& v, unsigned number) {
    return replaced(
        target, [&] { return operation.model(v.model, number); }, [&] { return operation.library(v.value, number); });
}

}  // namespace twin
