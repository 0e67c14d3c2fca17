#include "text/path_text.h"

#include <cstddef>

namespace text {
namespace {

constexpr std::string_view kGzip = ".gz";

}  // namespace

std::string_view FolderPart(std::string_view path) {
    return path.substr(0, path.rfind('/') + 1);  // without a slash, npos + 1 is 0
}

std::string_view NamePart(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

std::string_view WithoutExtension(std::string_view path) {
    const std::size_t dot = path.rfind('.');
    const bool inName = dot != std::string_view::npos && dot > FolderPart(path).size();
    return inName ? path.substr(0, dot) : path;
}

std::string LowerCaseExtension(std::string_view path) {
    // std::filesystem is not used, because for it a file named ".bvh" has no extension.
    const std::size_t dot = path.rfind('.');
    if (dot == std::string_view::npos || dot < FolderPart(path).size()) return {};
    std::string extension(path.substr(dot));
    for (char& character : extension)
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + 32);
    return extension;
}

bool IsGzipName(std::string_view path) {
    return LowerCaseExtension(path) == kGzip;
}

std::string_view WithoutGzip(std::string_view path) {
    return IsGzipName(path) ? path.substr(0, path.size() - kGzip.size()) : path;
}

}  // namespace text
