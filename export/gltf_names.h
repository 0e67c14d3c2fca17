// Finds the node names that a viewer would change.
// Internal to export/.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace exporters {

// Some viewers address the properties of nodes by paths that contain node names. They remove the
// characters that have a meaning in paths from the names, and replace white space. If two names are
// then equal, they add a number to one of them.
class GltfNames {
  public:
    // Adds the name of a node. Must be called for all nodes before the other functions are called.
    void Add(std::string_view name);
    // Whether a viewer may show another name instead of `name`, which must be one that was added.
    bool IsChanged(std::string_view name) const;
    // Returns a name that differs from all added names when a viewer has changed the names. The
    // function tries `name` first. It then tries `name` with the numbers 1, 2, 3 and so on after
    // it.
    std::string UnusedName(const std::string& name) const;

  private:
    std::unordered_map<std::string, int> counts_;  // by the name as a viewer changes it
};

}  // namespace exporters
