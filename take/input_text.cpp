#include "take/input_text.h"

#include <fmt/format.h>
#include <utility>

#include "survey/text_kind.h"
#include "text/gzip.h"
#include "text/path_text.h"

namespace take {
namespace {

std::string_view NameOf(const InputFile& file) {
    return file.name.empty() ? text::NamePart(file.path) : text::NamePart(file.name);
}

}  // namespace

std::string PlainName(const InputFile& file) {
    return std::string(text::WithoutGzip(NameOf(file)));
}

bool IsPacked(const InputFile& file) {
    return text::IsGzipName(NameOf(file));
}

InputText::InputText(const InputFile& file, text::Storage& storage)
    : content_(file.content ? &*file.content : nullptr) {
    if (!content_) stored_ = storage.Read(file.path);
    if (stored_) problem_ = stored_->Problem();
    if (!IsPacked(file) || !problem_.empty()) return;
    Unpack(content_ ? *content_ : stored_->Text());
    stored_.reset();
}

// An empty file becomes an empty text, so that it is reported as any other empty file.
void InputText::Unpack(std::string_view bytes) {
    unpacked_.emplace();
    if (bytes.empty()) return;
    text::Unpacked unpacked = text::UnpackGzip(bytes, text::kTooLarge);
    unpacked_ = std::move(unpacked.text);
    problem_ = std::move(unpacked.problem);
    if (!text::IsGzip(bytes))
        problem_ += fmt::format("; it looks like {}", survey::DescribeText(bytes));
}

std::string_view InputText::Text() const {
    if (unpacked_) return *unpacked_;
    return content_ ? *content_ : stored_->Text();
}

}  // namespace take
