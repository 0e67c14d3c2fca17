// Makes allocations fail, from the n-th on. The plug-in and the host use the program's operator
// new, which finds out from the address of its caller who called it. An allocation by the standard
// library on behalf of the plug-in counts as the plug-in's.
#pragma once

#include <cstdint>

namespace sweep {

// `count` allocations in a row fail, beginning with the `first`-th, counted from 1.
struct AllocationFaults {
    std::uint64_t first;
    std::uint64_t count;
};
// As a count: all further allocations fail.
constexpr std::uint64_t kUnlimited = ~std::uint64_t{0};

// From now on allocations of the library that holds `address` are counted and fail.
void FailAllocationsOf(const void* address, AllocationFaults faults);
// The same for every allocation of the program, including the plug-in's and the host's.
void FailAllocations(AllocationFaults faults);
// Stops failing and counting. Returns the number of allocations that were counted.
std::uint64_t EndAllocationFaults();

}  // namespace sweep
