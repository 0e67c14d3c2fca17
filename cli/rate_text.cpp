#include "cli/rate_text.h"

#include <cmath>
#include <fmt/format.h>

namespace cli {

std::string ShortNumber(double number) {
    if (std::abs(number) < 1.0 || std::abs(number) >= 1e9) return fmt::format("{:.6g}", number);
    std::string text = fmt::format("{:.3f}", number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string SpeedNote(double framesPerSecond, std::optional<double> statedRate) {
    if (!statedRate) return {};
    const bool isSlower = framesPerSecond < *statedRate;
    const double factor = isSlower ? *statedRate / framesPerSecond : framesPerSecond / *statedRate;
    // Files state their rates rounded, so that twice the rate may be a little more than twice.
    constexpr double kLargeChange = 2.0 * 1.001;
    if (!(factor > kLargeChange)) return {};
    return fmt::format(
        "--fps {}: the take plays {} times {} than its file states ({} frames per second)",
        ShortNumber(framesPerSecond), ShortNumber(factor), isSlower ? "slower" : "faster",
        ShortNumber(*statedRate));
}

}  // namespace cli
