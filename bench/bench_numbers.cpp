// Times the writing of angles as text, beside std::to_chars. One item is one number.
#include <benchmark/benchmark.h>
#include <charconv>
#include <cmath>
#include <vector>

#include "text/number_text.h"

namespace {

constexpr std::size_t kNumbers = 4096;

std::vector<double> Angles() {
    std::vector<double> angles(kNumbers);
    for (std::size_t i = 0; i < kNumbers; ++i)
        angles[i] = 90.0 * std::sin(12.9898 * static_cast<double>(i));
    return angles;
}

template <class Write>
void Time(benchmark::State& state, const Write& write) {
    const std::vector<double> angles = Angles();
    std::vector<char> text(kNumbers * (text::kLongestNumber + 1));
    for ([[maybe_unused]] auto _ : state) {
        char* end = text.data();
        for (const double angle : angles) {
            end = write(end, angle);
            *end++ = ' ';
        }
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kNumbers));
}

void BM_WriteNumber(benchmark::State& state) {
    const auto decimals = static_cast<int>(state.range(0));
    Time(state, [&](char* out, double number) { return text::WriteNumber(out, number, decimals); });
}

// The reference. It does not leave out zeros at the end.
void BM_ToChars(benchmark::State& state) {
    const auto decimals = static_cast<int>(state.range(0));
    Time(state, [&](char* out, double number) {
        return std::to_chars(out, out + text::kLongestNumber, number, std::chars_format::fixed,
                             decimals)
            .ptr;
    });
}

BENCHMARK(BM_WriteNumber)->Arg(6)->Arg(12);
BENCHMARK(BM_ToChars)->Arg(6)->Arg(12);

}  // namespace
