// Compares the conversions of RotationJobs, on several threads, with RotationKeys::Convert.
#include "mocap/rotation_jobs.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "math/rotation_math.h"
#include "threads/thread_count.h"

namespace rotation_jobs_test {
namespace {

// The values of some nodes: three arrays for each.
class Nodes {
  public:
    Nodes(std::size_t nodes, std::uint32_t frames) : frames_(frames) {
        std::mt19937_64 random(11);
        for (std::size_t i = 0; i < 3 * nodes * frames; ++i)
            values.push_back(static_cast<double>(random() % 7200) / 10.0 - 360.0);
    }
    RotationKeys Keys(std::size_t node) {
        RotationKeys keys;
        for (std::size_t i = 0; i < 3; ++i)
            keys.factor[i] = values.data() + (3 * node + i) * frames_;
        for (std::size_t i = 0; i < 3; ++i)
            keys.axis[(i + node) % 3] = keys.factor[i];
        return keys;
    }
    std::vector<std::uint64_t> Bits() const {
        std::vector<std::uint64_t> bits;
        for (const double value : values)
            bits.push_back(std::bit_cast<std::uint64_t>(value));
        return bits;
    }

    std::vector<double> values;

  private:
    std::size_t frames_;
};

// A different product for each node. Every third node has matrices.
struct Product {
    explicit Product(std::size_t node) {
        MatrixRotationXYZ(before, 0.1 * static_cast<double>(node), 0.5, -2.0);
        MatrixRotationZYX(after, -0.3, 0.2 * static_cast<double>(node), 2.0);
        for (int i = 0; i < 3; ++i)
            product.axis[i] = (i + static_cast<int>(node)) % 3;
        if (node % 3 == 0) product.before = before;
        if (node % 3 != 1) product.after = after;
    }
    double before[4][4];
    double after[4][4];
    RotationProduct product;
};

struct Row {
    std::size_t nodes;
    std::uint32_t frames;
};

const Row kRows[] = {{0, 5}, {3, 0}, {1, 1}, {5, 127}, {4, 5000}, {5000, 2}};

class RotationJobsTest : public testing::TestWithParam<Row> {
  protected:
    void TearDown() override { unsetenv(threads::kVariable); }
};

TEST_P(RotationJobsTest, ConvertLikeRotationKeys) {
    const auto [nodes, frames] = GetParam();
    Nodes one(nodes, frames);
    for (std::size_t node = 0; node < nodes; ++node)
        one.Keys(node).Convert(frames, Product(node).product);
    for (const char* const count : {"1", "2", "5"}) {
        setenv(threads::kVariable, count, 1);
        Nodes all(nodes, frames);
        RotationJobs jobs(frames);
        for (std::size_t node = 0; node < nodes; ++node)
            jobs.Add(all.Keys(node), Product(node).product);
        jobs.Run();
        EXPECT_TRUE(all.Bits() == one.Bits()) << count << " threads";
        jobs.Run();
        EXPECT_TRUE(all.Bits() == one.Bits()) << "the jobs are done only once";
    }
}

INSTANTIATE_TEST_SUITE_P(, RotationJobsTest, testing::ValuesIn(kRows));

}  // namespace
}  // namespace rotation_jobs_test
