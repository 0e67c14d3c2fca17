#include "export/gltf_names.h"

namespace exporters {
namespace {

// Returns the name as a viewer changes it: white space becomes "_", and characters that have a
// meaning in paths are removed.
std::string ChangedByViewers(std::string_view name) {
    static constexpr std::string_view kSpaces = " \t\n\r\v\f";
    static constexpr std::string_view kRemoved = "[]./:";
    std::string result;
    for (const char character : name) {
        if (kRemoved.find(character) != std::string_view::npos) continue;
        result += kSpaces.find(character) == std::string_view::npos ? character : '_';
    }
    return result;
}

// Whether the name contains U+00A0, U+1680, U+2000 to U+203F, U+205F, U+3000 or U+FEFF. These
// include all characters beyond ASCII that viewers replace as white space. Some of U+2000 to U+203F
// are not white space; a name with one of those is repeated without need.
bool MayHaveOtherSpace(std::string_view name) {
    for (const std::string_view firstBytes :
         {"\xC2\xA0", "\xE1\x9A\x80", "\xE2\x80", "\xE2\x81\x9F", "\xE3\x80\x80", "\xEF\xBB\xBF"})
        if (name.find(firstBytes) != std::string_view::npos) return true;
    return false;
}

}  // namespace

void GltfNames::Add(std::string_view name) {
    ++counts_[ChangedByViewers(name)];
}

bool GltfNames::IsChanged(std::string_view name) const {
    const std::string changed = ChangedByViewers(name);
    if (changed != name || MayHaveOtherSpace(name)) return true;
    const auto found = counts_.find(changed);
    return found != counts_.end() && found->second > 1;
}

std::string GltfNames::UnusedName(const std::string& name) const {
    std::string unused = name;
    for (int number = 1; counts_.contains(ChangedByViewers(unused)); ++number)
        unused = name + std::to_string(number);
    return unused;
}

}  // namespace exporters
