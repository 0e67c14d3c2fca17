// Which names a viewer would change.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace exporters {

// Viewers that address the properties of nodes by path take some characters out of names, and
// number those that then are alike.
class GltfNames {
  public:
    void Add(std::string_view name);
    // Whether the name, one of those added, can come out otherwise than it went in.
    bool IsChanged(std::string_view name) const;
    // The name or, where a node has it already, the name with a number.
    std::string Free(const std::string& name) const;

  private:
    std::unordered_map<std::string, int> counts_;  // of names as viewers make them
};

}  // namespace exporters
