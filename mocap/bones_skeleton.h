#pragma once

#include <vector>

#include "mocap/mocap_model.h"

// Nodes that rigid bones join one to one, from the top one to the last. Not empty; does not own
// them.
using BoneChain = std::vector<MOCAPMODEL*>;

// The chain that ends at `last`, upwards to where the tree branches or comes loose.
BoneChain GatherChain(MOCAPMODEL* last);

// Orders chains for qsort-like use: `a` and `b` point to pointers to chains. By the depth of the
// first node, then by length, rising.
int ChainsCompare(const void* a, const void* b);
