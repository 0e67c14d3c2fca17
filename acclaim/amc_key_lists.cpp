#include "acclaim/amc_key_lists.h"

#include <algorithm>
#include <utility>

void AmcKeyLists::AddChannels(std::uint32_t count) {
    firstRows_.insert(firstRows_.end(), count, numbers_.Count() - 1);
}

std::vector<KeyArray> AmcKeyLists::ArraysFor(std::size_t rows, AmcRows read) const {
    if (!read.keys.empty() && rows <= read.capacity) return std::move(read.keys);
    const auto count = static_cast<std::uint32_t>(rows);
    const KeyArray::Numbers times = AllocateNumbers(count);
    if (!times) return {};
    std::vector<KeyArray> keys =
        AllocateKeyArrays(static_cast<std::uint32_t>(firstRows_.size()), count, times);
    if (keys.empty() || read.keys.empty()) return keys;
    const auto copy = [&](const KeyArray::Numbers& from, const KeyArray::Numbers& to) {
        std::copy_n(from.get() + read.first, read.count, to.get() + read.first);
    };
    copy(read.keys.front().Times(), times);
    for (std::size_t channel = 0; channel < keys.size(); ++channel) {
        copy(read.keys[channel].Values(), keys[channel].Values());
        read.keys[channel].reset();
    }
    return keys;
}

std::vector<KeyArray> AmcKeyLists::ReleaseKeys(AmcRows read) {
    const std::size_t readFirst = read.first;
    const std::size_t readCount = read.count;
    std::vector<KeyArray> keys = ArraysFor(Rows() + readCount, std::move(read));
    if (keys.empty()) return {};
    double* const times = keys.front().Times().get();
    std::size_t width = 0;  // how many channels the row has
    std::size_t next = 0;
    for (std::size_t row = 0; row < Rows(); ++row) {
        const std::size_t before = width;
        while (width < firstRows_.size() && firstRows_[width] == row)
            ++width;
        const std::size_t to = row < readFirst ? row : row + readCount;
        times[to] = numbers_[row];
        for (std::size_t channel = 0; channel < width; ++channel)
            keys[channel].Values().get()[to] = values_[next++];
        for (std::size_t channel = before; channel < width; ++channel)
            std::fill_n(keys[channel].Values().get(), row, keys[channel].Values().get()[row]);
        values_.FreeBefore(next);
    }
    return keys;
}
