// Makes allocations fail, from the n-th on: the program's operator new is the plug-in's and the
// host's too, and knows by the caller's address whose call it is. What the standard library
// allocates for the plug-in counts as the plug-in's.
#pragma once

#include <cstdint>

namespace sweep {

// So many allocations in a row fail, beginning with the `first`-th (counted from 1).
struct AllocationFaults {
    std::uint64_t first;
    std::uint64_t count;
};
// As a count: there is no memory any more.
constexpr std::uint64_t kForGood = ~std::uint64_t{0};

// From now on allocations of the library that holds `address` are counted and fail.
void FailAllocationsOf(const void* address, AllocationFaults faults);
// The same with every allocation of the program, the plug-in's and the host's alike.
void FailAllocations(AllocationFaults faults);
// Stops failing and counting; the number of allocations since then.
std::uint64_t EndAllocationFaults();

}  // namespace sweep
