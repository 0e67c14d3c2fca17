#include "export/gltf_names.h"

namespace exporters {
namespace {

// White space becomes "_"; characters that separate the parts of a path are removed.
std::string AsViewersHaveIt(std::string_view name) {
    static constexpr std::string_view kSpaces = " \t\n\r\v\f";
    static constexpr std::string_view kRemoved = "[]./:";
    std::string result;
    for (const char character : name) {
        if (kRemoved.find(character) != std::string_view::npos) continue;
        result += kSpaces.find(character) == std::string_view::npos ? character : '_';
    }
    return result;
}

bool HasForeignSpace(std::string_view name) {
    // Lead bytes of the white space beyond ASCII: U+00A0, U+1680, U+2000 to U+205F, U+3000, U+FEFF.
    for (const std::string_view lead :
         {"\xC2\xA0", "\xE1\x9A\x80", "\xE2\x80", "\xE2\x81\x9F", "\xE3\x80\x80", "\xEF\xBB\xBF"})
        if (name.find(lead) != std::string_view::npos) return true;
    return false;
}

}  // namespace

void GltfNames::Add(std::string_view name) {
    ++counts_[AsViewersHaveIt(name)];
}

bool GltfNames::IsChanged(std::string_view name) const {
    const std::string changed = AsViewersHaveIt(name);
    if (changed != name || HasForeignSpace(name)) return true;
    const auto found = counts_.find(changed);
    return found != counts_.end() && found->second > 1;
}

std::string GltfNames::Free(const std::string& name) const {
    std::string free = name;
    for (int number = 1; counts_.contains(AsViewersHaveIt(free)); ++number)
        free = name + std::to_string(number);
    return free;
}

}  // namespace exporters
