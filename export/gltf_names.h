// Which names a viewer would change.
// Internal to export/.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace exporters {

// Viewers that address the properties of nodes by path remove some characters from names, and add
// numbers to names that are then equal.
class GltfNames {
  public:
    void Add(std::string_view name);
    // Whether a viewer may show another name in place of this one, which was added.
    bool IsChanged(std::string_view name) const;
    // The name or, where a viewer would have two of it, the name with a number.
    std::string Free(const std::string& name) const;

  private:
    std::unordered_map<std::string, int> counts_;  // by the name as viewers change it
};

}  // namespace exporters
