#include "survey/marked_text.h"

#include <algorithm>
#include <numeric>

namespace survey {

MendedText MarkedText::Finish() {
    MendedText mended;
    mended.lines.resize(marks_.size());
    std::size_t line = 1;
    std::size_t offset = 0;
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        for (; offset < marks_[i].offset; ++offset)
            line += text[offset] == '\n';
        mended.lines[i].mended = line;
    }
    // One pass over the source, in its own order.
    std::vector<std::size_t> order(marks_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto before = [&](std::size_t a, std::size_t b) { return marks_[a].at < marks_[b].at; };
    if (!std::is_sorted(order.begin(), order.end(), before))
        std::sort(order.begin(), order.end(), before);
    const char* at = source_.Text().data();
    const char* const end = at + source_.Text().size();
    line = 1;
    for (const std::size_t index : order) {
        for (; at < marks_[index].at; ++at)
            line += *at == '\n' || (*at == '\r' && (at + 1 == end || at[1] != '\n'));
        mended.lines[index].original = line;
    }
    mended.text = std::move(text);
    return mended;
}

}  // namespace survey
