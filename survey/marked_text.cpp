#include "survey/marked_text.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

#include "survey/kept_text.h"

namespace survey {

namespace {

// Returns the number of line ends in [first, last). `end` is the end of the whole text. Neither
// `first` nor `last` may be between a carriage return and its line feed.
std::size_t LineEnds(const char* first, const char* last, const char* end) {
    auto count = static_cast<std::size_t>(std::count(first, last, '\n'));
    const auto size = static_cast<std::size_t>(last - first);
    if (size == 0 || std::memchr(first, '\r', size) == nullptr) return count;
    for (const char* at = first; at < last; ++at)
        count += *at == '\r' && (at + 1 == end || at[1] != '\n');
    return count;
}

}  // namespace

std::shared_ptr<const MendedText> MarkedText::Finish() {
    std::vector<LineMark> lines(marks_.size());
    std::size_t line = 1;
    std::size_t offset = 0;
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        const auto first = text.begin() + static_cast<std::ptrdiff_t>(offset);
        offset = marks_[i].offset;
        const auto last = text.begin() + static_cast<std::ptrdiff_t>(offset);
        line += static_cast<std::size_t>(std::count(first, last, '\n'));
        lines[i].mended = line;
    }
    // The marks are sorted by the byte of the source that they point to, so that the lines of the
    // source are counted in one pass.
    std::vector<std::size_t> order(marks_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto before = [&](std::size_t a, std::size_t b) { return marks_[a].at < marks_[b].at; };
    if (!std::is_sorted(order.begin(), order.end(), before))
        std::sort(order.begin(), order.end(), before);
    const char* at = source_.Text().data();
    const char* const end = at + source_.Text().size();
    line = 1;
    for (const std::size_t index : order) {
        line += LineEnds(at, marks_[index].at, end);
        at = marks_[index].at;
        lines[index].original = line;
    }
    return KeepText(std::move(text), std::move(lines));
}

}  // namespace survey
