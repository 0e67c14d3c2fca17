#pragma once

#include <vector>

#include "mocap/mocap_model.h"

// Nodes of which each is the only bone child of the one before. Not empty. Does not own the nodes.
using BoneChain = std::vector<MOCAPMODEL*>;

// Returns the chain that ends at `last` and begins where the tree branches or a node is detached.
BoneChain GatherChain(MOCAPMODEL* last);

// Compares chains by the depth of their first nodes, then by their lengths, in rising order. `a`
// and `b` point to pointers to chains; the result is as qsort needs it.
int ChainsCompare(const void* a, const void* b);
