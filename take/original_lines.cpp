#include "take/original_lines.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "headless/text.h"
#include "plugin/contract.h"

namespace take {
namespace {

Zelk::CString WithOriginalLine(const Zelk::CString& text, const LineMarks& marks) {
    const std::wstring_view whole = headless::View(text);
    if (!whole.starts_with(plugin::kErrorLineStart)) return text;
    std::size_t line = 0;
    std::size_t end = plugin::kErrorLineStart.size();
    for (; end < whole.size() && whole[end] >= L'0' && whole[end] <= L'9'; ++end)
        line = line * 10 + static_cast<std::size_t>(whole[end] - L'0');
    const std::wstring restored = std::wstring(plugin::kErrorLineStart) +
                                  std::to_wstring(OriginalLine(marks, line)) +
                                  std::wstring(whole.substr(end));
    return {restored.c_str()};
}

}  // namespace

headless::LogLine OriginalLines::Restore(const headless::LogLine& line) {
    const LineMarks* marks = subject_.IsMotion(line) && hasMotion_ ? motion_ : file_;
    headless::LogLine restored = line;
    if (marks) restored.text = WithOriginalLine(line.text, *marks);
    return restored;
}

std::size_t OriginalLine(const LineMarks& marks, std::size_t mended) {
    auto after = std::upper_bound(
        marks.begin(), marks.end(), mended,
        [](std::size_t number, const survey::LineMark& mark) { return number < mark.mended; });
    if (after == marks.begin()) return mended;
    --after;
    return after->original + (mended - after->mended);
}

}  // namespace take
