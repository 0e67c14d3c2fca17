#include "acclaim/amc_key_lists.h"

void AmcKeyLists::AddChannels(std::uint32_t count) {
    firstRows_.insert(firstRows_.end(), count, numbers_.Count() - 1);
}

std::vector<KeyArray> AmcKeyLists::ReleaseKeys() {
    const auto rows = static_cast<std::uint32_t>(numbers_.Count());
    std::vector<KeyArray> keys =
        AllocateKeyArrays(static_cast<std::uint32_t>(firstRows_.size()), rows);
    if (keys.empty()) return {};
    std::size_t width = 0;  // how many channels the row has
    std::size_t next = 0;
    for (std::uint32_t row = 0; row < rows; ++row) {
        const std::size_t before = width;
        while (width < firstRows_.size() && firstRows_[width] == row)
            ++width;
        const double time = numbers_[row];
        for (std::size_t channel = 0; channel < width; ++channel)
            keys[channel].get()[row] = {time, values_[next++]};
        for (std::size_t channel = before; channel < width; ++channel)
            for (std::uint32_t early = 0; early < row; ++early)
                keys[channel].get()[early] = {static_cast<double>(numbers_[early]),
                                              keys[channel].get()[row].value};
        values_.FreeBefore(next);
    }
    return keys;
}
