#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

// Finds the index of a node by its name. Upper and lower case of ASCII letters are not
// distinguished. If several nodes have the same name, Find returns the lowest index. The time for a
// search depends on the length of the name, not on the number of nodes.
class NodeNames {
  public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;  // Find did not find the name

    void Clear() { nodes_.clear(); }
    void Add(const char* name, std::uint32_t node);
    std::uint32_t Find(const char* name);
    // Removes the index that Find returns for this name. At least one node must have this name.
    void RemoveFirst(const char* name);

  private:
    const std::string& Fold(const char* name);

    // Each key is a name in lower case. Its value has the indices of the nodes with this name. They
    // form a heap, so the first element is the lowest index.
    std::unordered_map<std::string, std::vector<std::uint32_t>> nodes_;
    std::string folded_;
};
