#include "acclaim/amc_key_lists.h"

#include <algorithm>

void AmcKeyLists::AddChannels(std::uint32_t count) {
    firstRows_.insert(firstRows_.end(), count, numbers_.Count() - 1);
}

std::vector<KeyArray> AmcKeyLists::ReleaseKeys() {
    const auto rows = static_cast<std::uint32_t>(numbers_.Count());
    const KeyArray::Numbers times = AllocateNumbers(rows);
    if (!times) return {};
    for (std::uint32_t row = 0; row < rows; ++row)
        times[row] = numbers_[row];
    std::vector<KeyArray> keys =
        AllocateKeyArrays(static_cast<std::uint32_t>(firstRows_.size()), rows, times);
    if (keys.empty()) return {};
    std::size_t width = 0;  // how many channels the row has
    std::size_t next = 0;
    for (std::uint32_t row = 0; row < rows; ++row) {
        const std::size_t before = width;
        while (width < firstRows_.size() && firstRows_[width] == row)
            ++width;
        for (std::size_t channel = 0; channel < width; ++channel)
            keys[channel].Values()[row] = values_[next++];
        for (std::size_t channel = before; channel < width; ++channel)
            std::fill_n(keys[channel].Values().get(), row, keys[channel].Values()[row]);
        values_.FreeBefore(next);
    }
    return keys;
}
