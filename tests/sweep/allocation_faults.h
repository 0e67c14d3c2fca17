// Makes the n-th allocation of the plug-in fail: the program's operator new is the plug-in's too,
// and knows by the caller's address whose call it is. What the standard library allocates for the
// plug-in counts as the plug-in's; what the host allocates does not.
#pragma once

#include <cstdint>

namespace sweep {

// From now on the `allocation`-th allocation (counted from 1) of the library that holds `address`
// fails, once; with 0 none does, and they are counted all the same.
void FailAllocation(const void* address, std::uint64_t allocation);
// Stops failing and counting; the number of allocations since FailAllocation.
std::uint64_t EndAllocationFaults();

}  // namespace sweep
