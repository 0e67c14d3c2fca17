#include "survey/line_marks.h"

#include <utility>

namespace survey {
namespace {

constexpr std::size_t kBytesAtOnce = std::size_t{64} << 10U;

}  // namespace

void LineWriter::From(std::size_t original) {
    if (original == 0 || original == original_) return;
    original_ = original;
    if (!marks_.empty() && marks_.back().mended == line_)
        marks_.back().original = original;
    else
        marks_.push_back({line_, original});
}

void LineWriter::EndLine() {
    text_ += '\n';
    CountLine();
    if (text_.size() >= kBytesAtOnce) Flush();
}

void LineWriter::CountLine() {
    ++line_;
    ++original_;
}

text::ByteSink& LineWriter::Flush() {
    if (!text_.empty()) out_.Write(text_);
    text_.clear();
    return out_;
}

std::vector<LineMark> LineWriter::Finish() {
    Flush();
    return std::move(marks_);
}

}  // namespace survey
