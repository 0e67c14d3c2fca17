#include "app/original_lines.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "headless/text.h"
#include "host/constants.h"

namespace app {
namespace {

// "ERROR (LINE 12): words"
constexpr std::wstring_view kLineStart = L"ERROR (LINE ";

Zelk::CString WithOriginalLine(const Zelk::CString& text, const PluginFile& file) {
    const std::wstring_view whole = headless::View(text);
    if (!file.IsMended() || !whole.starts_with(kLineStart)) return text;
    std::size_t line = 0;
    std::size_t end = kLineStart.size();
    for (; end < whole.size() && whole[end] >= L'0' && whole[end] <= L'9'; ++end)
        line = line * 10 + static_cast<std::size_t>(whole[end] - L'0');
    const std::wstring restored = std::wstring(kLineStart) +
                                  std::to_wstring(OriginalLine(file.lines, line)) +
                                  std::wstring(whole.substr(end));
    return {restored.c_str()};
}

}  // namespace

headless::LogLine OriginalLines::Restore(const headless::LogLine& line) {
    const bool isMotion = skeletonDone_ && !survey_.motion.path.empty();
    headless::LogLine restored = line;
    restored.text = WithOriginalLine(line.text, isMotion ? survey_.motion : survey_.file);
    if (line.severity == Zelk::zkInfoSeverity) skeletonDone_ = true;
    return restored;
}

std::size_t OriginalLine(const std::vector<survey::LineMark>& marks, std::size_t mended) {
    auto after = std::upper_bound(
        marks.begin(), marks.end(), mended,
        [](std::size_t number, const survey::LineMark& mark) { return number < mark.mended; });
    if (after == marks.begin()) return mended;
    --after;
    return after->original + (mended - after->mended);
}

}  // namespace app
