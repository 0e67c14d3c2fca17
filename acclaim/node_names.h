#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

// Finds nodes by name, in any letter case of ASCII. Of several nodes with one name it finds the
// node with the lowest number. The cost grows with the length of the name, not with the number of
// nodes.
class NodeNames {
  public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    void Clear() { nodes_.clear(); }
    void Add(const char* name, std::uint32_t node);
    std::uint32_t Find(const char* name);
    // Forgets the name of the node that Find returns for it.
    void RemoveFirst(const char* name);

  private:
    const std::string& Fold(const char* name);

    // The key is a name in lower case. The nodes with this name are a heap; the first one has the
    // lowest number.
    std::unordered_map<std::string, std::vector<std::uint32_t>> nodes_;
    std::string folded_;
};
