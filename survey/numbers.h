// A list of numbers that can grow without being set.
#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace survey {

// Leaves a number unset unless it is given a value. Setting many numbers that are overwritten
// anyway takes about as long as computing them.
template <class Number>
struct UnsetAllocator : std::allocator<Number> {
    template <class Other>
    struct rebind {
        using other = UnsetAllocator<Other>;
    };

    template <class Other>
    void construct(Other* at) noexcept {
        ::new (static_cast<void*>(at)) Other;
    }
    template <class Other, class... Values>
    void construct(Other* at, Values&&... values) {
        ::new (static_cast<void*>(at)) Other(std::forward<Values>(values)...);
    }
};

// Numbers(count) and resize(count) leave new numbers unset.
using Numbers = std::vector<double, UnsetAllocator<double>>;

}  // namespace survey
