// Reading numbers from the environment.
#include "environment.h"

#include <cerrno>
#include <cstdlib>
#include <iostream>

namespace twin {

std::uint64_t number_from(const char* variable, std::uint64_t otherwise) {
    const char* text = std::getenv(variable);
    if (text == nullptr) return otherwise;
    char* end = nullptr;
    errno = 0;
    const std::uint64_t number = std::strtoull(text, &end, 10);
    if (errno != 0 || *text < '0' || *text > '9' || *end != '\0') {
        std::cerr << variable << " is not a number: " << text << '\n';
        std::exit(EXIT_FAILURE);
    }
    return number;
}

}  // namespace twin
