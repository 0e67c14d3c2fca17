// Finds the node names that a viewer would change.
// Internal to export/.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace exporters {

// Some viewers address the properties of nodes by paths that contain node names. They remove from
// names the characters that have a meaning in paths, and add numbers to names that are then equal.
class GltfNames {
  public:
    // Adds the name of a node. To be called for all nodes before the other functions.
    void Add(std::string_view name);
    // Whether a viewer may show another name instead of this one, which must have been added.
    bool IsChanged(std::string_view name) const;
    // Returns the name if no added name is equal to it in a viewer; otherwise the name with the
    // first number that makes it different.
    std::string UnusedName(const std::string& name) const;

  private:
    std::unordered_map<std::string, int> counts_;  // key: the name after a viewer's changes
};

}  // namespace exporters
