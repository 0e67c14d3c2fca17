#include "tests/sweep/allocation_faults.h"

#include <cstddef>
#include <link.h>
#include <stdexcept>
#include <unwind.h>

#include "tests/support/memory/new_operators.h"

namespace sweep {
namespace {

struct Range {
    std::uintptr_t first = 0;
    std::uintptr_t last = 0;
    bool Holds(std::uintptr_t address) const { return address >= first && address < last; }
};

Range plugin;
Range standardLibrary;
std::uint64_t seen = 0;
AllocationFaults failing{};

struct Search {
    std::uintptr_t address;
    Range found;
};

int VisitLibrary(dl_phdr_info* info, std::size_t, void* data) {
    Search& search = *static_cast<Search*>(data);
    Range range{~std::uintptr_t{0}, 0};
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        if (info->dlpi_phdr[i].p_type != PT_LOAD) continue;
        const std::uintptr_t start = info->dlpi_addr + info->dlpi_phdr[i].p_vaddr;
        range.first = start < range.first ? start : range.first;
        const std::uintptr_t end = start + info->dlpi_phdr[i].p_memsz;
        range.last = end > range.last ? end : range.last;
    }
    if (!range.Holds(search.address)) return 0;
    search.found = range;
    return 1;
}

Range LibraryWith(const void* address) {
    Search search{reinterpret_cast<std::uintptr_t>(address), {}};
    dl_iterate_phdr(VisitLibrary, &search);
    if (search.found.last == 0) throw std::logic_error("no library holds the address");
    return search.found;
}

// Searches the stack for the first caller outside the standard library. The walk begins in this
// file; the frames before those of the standard library are skipped.
_Unwind_Reason_Code VisitFrame(_Unwind_Context* context, void* data) {
    const auto address = static_cast<std::uintptr_t>(_Unwind_GetIP(context));
    Search& search = *static_cast<Search*>(data);
    const bool isBefore = search.found.last == 0;  // not yet at the standard library's frames
    if (standardLibrary.Holds(address)) {
        search.found = standardLibrary;
        return _URC_NO_REASON;
    }
    if (isBefore) return _URC_NO_REASON;
    search.address = address;
    return _URC_END_OF_STACK;
}

bool IsPlugins(const void* caller) {
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    if (plugin.Holds(address)) return true;
    if (!standardLibrary.Holds(address)) return false;
    Search search{0, {}};
    _Unwind_Backtrace(VisitFrame, &search);
    return plugin.Holds(search.address);
}

bool NextFails() {
    ++seen;
    return seen >= failing.first && seen - failing.first < failing.count;
}

bool FailsForPlugin(const void* caller) {
    support::failsAllocation = nullptr;  // allocations by the stack walk are not counted
    const bool fails = IsPlugins(caller) && NextFails();
    support::failsAllocation = FailsForPlugin;
    return fails;
}

bool FailsForAll(const void*) {
    return NextFails();
}

void Start(AllocationFaults faults, bool (*fails)(const void*)) {
    seen = 0;
    failing = faults;
    support::failsAllocation = fails;
}

}  // namespace

void FailAllocationsOf(const void* address, AllocationFaults faults) {
    plugin = LibraryWith(address);
    // This conversion gives the address of the function in its library, not that of a stub here.
    void (*const throwing)(const char*) = &std::__throw_length_error;
    standardLibrary = LibraryWith(reinterpret_cast<const void*>(throwing));
    Start(faults, FailsForPlugin);
}

void FailAllocations(AllocationFaults faults) {
    Start(faults, FailsForAll);
}

std::uint64_t EndAllocationFaults() {
    support::failsAllocation = nullptr;
    return seen;
}

}  // namespace sweep
