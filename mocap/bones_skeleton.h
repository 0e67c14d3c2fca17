#pragma once

#include <vector>

#include "mocap/mocap_model.h"

// The nodes of a chain. Each node, except the first, is the only child of the node before it. A
// chain has at least one node. It does not own its nodes.
using BoneChain = std::vector<MOCAPMODEL*>;

// Returns the chain that ends at `last`. The function adds one ancestor of `last` after the other.
// It stops before an ancestor that has several children or no bone child. It also stops after it
// has added a detached ancestor or the root of the skeleton. The last node that was added is the
// first node of the chain.
BoneChain GatherChain(MOCAPMODEL* last);

// Compares two chains by the depth of their first node, then by their number of nodes. `a` and `b`
// are pointers to pointers to chains. The result is negative if `a` comes first, positive if `b`
// comes first, and 0 if they are equal.
int ChainsCompare(const void* a, const void* b);
