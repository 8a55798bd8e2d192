// How the types of expressions are pinned.
#pragma once

#include <type_traits>

#include "kval.h"

#define HAS_TYPE(type, expression) \
    static_assert(std::is_same<decltype(expression), type>::value, #expression " must be of type " #type)
#define THROWS_NOTHING(expression) static_assert(noexcept(expression), #expression " must be noexcept")
#define MAY_THROW(expression) \
    static_assert(!noexcept(expression), #expression " must let std::bad_alloc and messages through")
#define IS(...) static_assert(__VA_ARGS__::value, #__VA_ARGS__)
#define IS_NOT(...) static_assert(!__VA_ARGS__::value, "not " #__VA_ARGS__)
