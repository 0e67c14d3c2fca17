#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

// Finds nodes by name in any letter case of ASCII; of equal names the node with the lowest number
// wins. The cost is that of the name, however many there are.
class NodeNames {
  public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    void Clear() { nodes_.clear(); }
    void Add(const char* name, std::uint32_t node);
    std::uint32_t Find(const char* name);
    // Takes the name from the node that Find gives for it.
    void RemoveFirst(const char* name);

  private:
    const std::string& Fold(const char* name);

    // The nodes of a name as a heap, the lowest first.
    std::unordered_map<std::string, std::vector<std::uint32_t>> nodes_;
    std::string folded_;
};
