#include "export/object_names.h"

namespace exporters {

bool IsNumbered(std::wstring_view name, std::wstring_view wanted) {
    if (!name.starts_with(wanted)) return false;
    name.remove_prefix(wanted.size());
    return name.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

bool IsEndName(std::wstring_view name, std::wstring_view parent) {
    const std::size_t suffixAt = name.rfind(kEndSuffix);
    return suffixAt != std::wstring_view::npos && IsNumbered(name.substr(suffixAt), kEndSuffix) &&
           IsNumbered(parent, name.substr(0, suffixAt));
}

std::wstring NameSet::Add(const std::wstring& wanted) {
    if (names_.insert(wanted).second) return wanted;
    // A number is never free again, so the search goes on where it ended last time.
    std::size_t& number = next_.try_emplace(wanted, 1).first->second;
    while (true) {
        std::wstring name = wanted + std::to_wstring(number++);
        if (names_.insert(name).second) return name;
    }
}

}  // namespace exporters
