// Recognises the names that the importers and the host give to objects.
// Internal to export/.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace exporters {

inline constexpr std::wstring_view kEndSuffix = L"_End";

// Whether `name` is a name that the importers give to an end site of the joint `parent`. For a
// joint that the file calls "X" they use "X_End". If a name is in use, the host adds a number to
// it. So there may be a number after "_End", and the joint may have the name "X" with a number.
bool IsEndName(std::wstring_view name, std::wstring_view parent);

// Whether `name` is `wanted`, or `wanted` with a number after it. The host gives an object such a
// name if the name `wanted` is already in use.
bool IsNumbered(std::wstring_view name, std::wstring_view wanted);

// A set of names, each of which occurs once.
class NameSet {
  public:
    // Adds `wanted`, and returns it. If it is already in the set, appends the smallest number from
    // 1 that makes a new name. The host chooses names in the same way.
    std::wstring Add(const std::wstring& wanted);

  private:
    std::unordered_set<std::wstring> names_;
    // For each name that was wanted more than once, the next number to try.
    std::unordered_map<std::wstring, std::size_t> next_;
};

}  // namespace exporters
