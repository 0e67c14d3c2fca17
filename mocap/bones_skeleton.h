#pragma once

#include <vector>

#include "mocap/mocap_model.h"

// The nodes of a chain. Each node, except the first, is the only child of the node before it. A
// chain has at least one node. It does not own its nodes.
using BoneChain = std::vector<MOCAPMODEL*>;

// Returns the chain that ends at `last`. The chain begins after the nearest ancestor that has
// several children or no bone child, or at the nearest detached ancestor.
BoneChain GatherChain(MOCAPMODEL* last);

// Compares two chains by the depth of their first node, then by their number of nodes. `a` and `b`
// are pointers to pointers to chains. The result is negative if `a` comes first, positive if `b`
// comes first, and 0 if they are equal.
int ChainsCompare(const void* a, const void* b);
