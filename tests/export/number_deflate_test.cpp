// Numbers that are compressed are the same after they are unpacked, and those that repeat get
// short.
#include "export/number_deflate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <vector>
#include <zlib.h>

namespace number_deflate_test {

struct Row {
    const char* name;
    std::string bytes;
    double mostShare;  // the greatest share of the bytes that may be left
};

template <class Number, class Function>
std::string Numbers(std::size_t count, const Function& at) {
    std::string bytes;
    for (std::size_t index = 0; index < count; ++index) {
        const auto number = static_cast<Number>(at(index));
        bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
    return bytes;
}

std::vector<Row> Rows() {
    std::mt19937 random(7);
    const auto noise = [&](std::size_t index) {
        return std::sin(static_cast<double>(index) / 50.0) * 30.0 +
               static_cast<double>(random() % 1'000'000) / 1e7;
    };
    const auto constant = [](std::size_t) { return 5.0; };
    return {
        {"Nothing", "", 100.0},
        {"OneByte", "x", 100.0},
        {"Few", Numbers<float>(100, noise), 1.2},
        {"Noise", Numbers<float>(50'000, noise), 0.95},
        {"Constant", Numbers<float>(50'000, constant), 0.02},
        {"Times",
         Numbers<std::int64_t>(10'000, [](std::size_t index) { return index * 384'884'649; }), 0.8},
        {"Rounded",
         Numbers<float>(50'000, [&](std::size_t index) { return std::round(noise(index)); }), 0.4},
    };
}

TEST(NumberDeflate, LooksForRepeatsWhereTheyAre) {
    using exporters::Deflation;
    const Deflation expected[] = {Deflation::Counts, Deflation::Repeats, Deflation::Repeats};
    std::size_t row = 0;
    for (const char* const name : {"Noise", "Constant", "Times"}) {
        const std::vector<Row> rows = Rows();
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& one) {
            return one.name == std::string(name);
        });
        EXPECT_EQ(exporters::BetterDeflation(found->bytes), expected[row++]) << name;
    }
}

TEST(NumberDeflate, GivesTheSameForEachOfSeveralArrays) {
    exporters::NumberDeflater deflater(exporters::Deflation::Repeats);
    const std::string once = deflater.Deflate(Rows().back().bytes);
    deflater.Deflate("x");
    EXPECT_EQ(deflater.Deflate(Rows().back().bytes), once);
}

TEST(NumberDeflate, CanBeUnpacked) {
    for (const Row& row : Rows()) {
        const std::string packed = exporters::DeflateNumbers(row.bytes);
        EXPECT_LE(static_cast<double>(packed.size()),
                  row.mostShare * static_cast<double>(row.bytes.size()) + 16.0)
            << row.name;
        std::string unpacked(row.bytes.size() + 1, '\0');
        uLongf size = unpacked.size();
        ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(unpacked.data()), &size,
                             reinterpret_cast<const Bytef*>(packed.data()), packed.size()),
                  Z_OK)
            << row.name;
        unpacked.resize(size);
        EXPECT_EQ(unpacked, row.bytes) << row.name;
    }
}

}  // namespace number_deflate_test
