#include "survey/line_marks.h"

#include "memory/large_memory.h"

namespace survey {

LineWriter::LineWriter(std::size_t likelySize) {
    std::string& text = mended_.text;
    text.reserve(likelySize);
    memory::AskForLargePages(text.data(), text.capacity());
}

void LineWriter::From(std::size_t original) {
    if (original == 0 || original == original_) return;
    original_ = original;
    if (!mended_.lines.empty() && mended_.lines.back().mended == line_)
        mended_.lines.back().original = original;
    else
        mended_.lines.push_back({line_, original});
}

void LineWriter::EndLine() {
    mended_.text += '\n';
    CountLine();
}

void LineWriter::CountLine() {
    ++line_;
    ++original_;
}

}  // namespace survey
