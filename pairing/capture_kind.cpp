#include "pairing/capture_kind.h"

#include "text/path_text.h"

namespace pairing {
namespace {

// The kinds of files that can be read, by extension. A new kind needs an entry here.
struct Input {
    CaptureKind kind;
    std::string_view extension;
};

constexpr Input kInputs[] = {
    {CaptureKind::Biovision, ".bvh"},
    {CaptureKind::Skeleton, ".asf"},
    {CaptureKind::Motion, ".amc"},
};

}  // namespace

std::optional<CaptureKind> KindOf(std::string_view path) {
    const std::string extension = text::LowerCaseExtension(text::WithoutGzip(path));
    for (const Input& input : kInputs)
        if (extension == input.extension) return input.kind;
    return std::nullopt;
}

std::string_view NameOf(CaptureKind kind) {
    std::string_view name;
    for (const Input& input : kInputs)
        if (kind == input.kind) name = input.extension.substr(1);
    return name;
}

bool IsAcclaim(std::string_view path) {
    const std::optional<CaptureKind> kind = KindOf(path);
    return kind == CaptureKind::Skeleton || kind == CaptureKind::Motion;
}

}  // namespace pairing
