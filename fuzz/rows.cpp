// C++ source text for the rows of a test.
#include "rows.h"

namespace fuzz {

std::string literal(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\' || c == '?') quoted += '\\';
        if (code >= ' ' && code <= '~') {
            quoted += c;
            continue;
        }
        quoted += '\\';
        for (const int shift : {6, 3, 0}) quoted += static_cast<char>('0' + (code >> shift & 7));
    }
    return quoted + '"';
}

}  // namespace fuzz
