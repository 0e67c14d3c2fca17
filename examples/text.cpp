#include "examples/text.h"

#include <charconv>
#include <cstddef>
#include <string_view>

namespace examples {

void AppendNumber(std::string& text, double value, int digits) {
    char buffer[400];  // the largest double has 309 digits before the decimal point
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, digits).ptr;
    std::string_view written(buffer, static_cast<std::size_t>(end - buffer));
    if (written.front() == '-' && written.find_first_not_of("-0.") == std::string_view::npos)
        written.remove_prefix(1);
    text += written;
}

}  // namespace examples
