// Times the conversion of products of three rotations to X-Y-Z angles. BM_OneByOne converts one
// product at a time. BM_Blocks converts a block of kRotationBlock products at a time.
#include <benchmark/benchmark.h>

#include "math/rotation_batch.h"
#include "math/rotation_math.h"

namespace {

RotationBlock SomeAngles() {
    RotationBlock block;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t lane = 0; lane < kRotationBlock; ++lane)
            block.angle[i][lane] = 17.3 * static_cast<double>(lane + 5 * i) - 700.0;
    return block;
}

struct Product {
    double before[4][4];
    double after[4][4];
    RotationProduct product;

    explicit Product(bool framed) {
        MatrixRotationXYZ(before, 0.3, 0.5, -2.0);
        MatrixRotationZYX(after, -0.3, -0.5, 2.0);
        product.axis[0] = 1;
        product.axis[1] = 0;
        product.axis[2] = 2;
        if (!framed) return;
        product.before = before;
        product.after = after;
    }
};

void CountRotations(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kRotationBlock));
}

void BM_OneByOne(benchmark::State& state) {
    const RotationBlock block = SomeAngles();
    const Product product(state.range(0) != 0);
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t lane = 0; lane < kRotationBlock; ++lane) {
            double angles[3] = {block.angle[0][lane], block.angle[1][lane], block.angle[2][lane]};
            ConvertRotation(angles, product.product);
            benchmark::DoNotOptimize(angles);
        }
    }
    CountRotations(state);
}

void BM_Blocks(benchmark::State& state) {
    const RotationBlock given = SomeAngles();
    const Product product(state.range(0) != 0);
    for ([[maybe_unused]] auto _ : state) {
        RotationBlock block = given;
        ConvertRotations(block, product.product);
        benchmark::DoNotOptimize(block);
    }
    CountRotations(state);
}

// If the argument "framed" is 1, each product has two more factors: a fixed matrix before the three
// rotations, and a second fixed matrix after them. An import needs such products for the axes of
// Acclaim bones and for the rest poses of bones.
BENCHMARK(BM_OneByOne)->ArgName("framed")->Arg(0)->Arg(1);
BENCHMARK(BM_Blocks)->ArgName("framed")->Arg(0)->Arg(1);

}  // namespace
