#include "cli/convert_summary.h"

#include <cmath>
#include <fmt/format.h>
#include <string_view>

#include "text/escapes.h"

namespace cli {
namespace {

std::string Files(std::size_t count) {
    return fmt::format("{} file{}", count, count == 1 ? "" : "s");
}

// Returns a text such as "4 files: 3 converted, 1 failed".
std::string Outcomes(const ConvertCounts& counts, bool isDiskFull) {
    std::string text = fmt::format("{}: {} converted", Files(counts.total), counts.converted);
    const auto add = [&](std::size_t count, std::string_view what) {
        if (count > 0) text += fmt::format(", {} {}", count, what);
    };
    add(counts.upToDate, "up to date");
    add(counts.partial, "imported in part");
    add(counts.failed, "failed");
    add(counts.total - counts.Done(),
        isDiskFull ? "not converted" : "cancelled (--resume continues)");
    return text;
}

// Returns a text such as "41.3 s", "12 min 5 s" or "3 h 25 min".
std::string Duration(double seconds) {
    if (seconds < 120.0) return fmt::format("{:.1f} s", seconds);
    const long whole = std::lround(seconds);
    if (whole < 7200) return fmt::format("{} min {} s", whole / 60, whole % 60);
    return fmt::format("{} h {} min", whole / 3600, whole / 60 % 60);
}

}  // namespace

std::string ConvertSummary(const ConvertCounts& counts, const dataset::RunEnd& end, double seconds,
                           bool timing) {
    const double rate = seconds > 0.0 ? static_cast<double>(counts.imports) / seconds : 0.0;
    std::string text = Outcomes(counts, end.isDiskFull) + '\n';
    for (const auto& [code, files] : counts.filesByCode)
        text += fmt::format("  {}: {}\n", code, Files(files));
    if (counts.imports > 0)
        text += fmt::format("{}, {:.{}f} files a second\n", Duration(seconds), rate,
                            rate < 10.0 ? 1 : 0);
    if (timing)
        text += fmt::format(
            "load_ms={:.3f}\nhash_ms={:.3f}\nwrite_ms={:.3f}\nfiles_per_second={:.3f}\n",
            counts.loadMilliseconds, counts.hashMilliseconds, counts.writeMilliseconds, rate);
    if (!end.index.empty()) text += text::EscapeControls(end.index) + '\n';
    return text;
}

}  // namespace cli
