#include "acclaim/node_names.h"

#include <algorithm>
#include <functional>

#include "textio/ascii.h"

const std::string& NodeNames::Fold(const char* name) {
    folded_ = name;
    std::transform(folded_.begin(), folded_.end(), folded_.begin(), textio::ToLower);
    return folded_;
}

void NodeNames::Add(const char* name, std::uint32_t node) {
    std::vector<std::uint32_t>& heap = nodes_[Fold(name)];
    heap.push_back(node);
    std::push_heap(heap.begin(), heap.end(), std::greater<>());
}

std::uint32_t NodeNames::Find(const char* name) {
    const auto found = nodes_.find(Fold(name));
    // If memory ran out while Add added the first node of a name, the list of that name is empty.
    return found == nodes_.end() || found->second.empty() ? kNone : found->second.front();
}

void NodeNames::RemoveFirst(const char* name) {
    const auto found = nodes_.find(Fold(name));
    std::vector<std::uint32_t>& heap = found->second;
    std::pop_heap(heap.begin(), heap.end(), std::greater<>());
    heap.pop_back();
    if (heap.empty()) nodes_.erase(found);
}
