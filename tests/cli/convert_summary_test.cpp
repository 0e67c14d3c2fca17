#include "cli/convert_summary.h"

#include <gtest/gtest.h>

namespace convert_summary_test {

using cli::ConvertCounts;

dataset::RunEnd EndWith(const std::string& index, bool isDiskFull = false) {
    dataset::RunEnd end;
    end.index = index;
    end.isDiskFull = isDiskFull;
    return end;
}

ConvertCounts Run(std::size_t total, std::size_t converted) {
    ConvertCounts counts;
    counts.total = total;
    counts.converted = counts.imports = converted;
    return counts;
}

ConvertCounts MixedRun() {
    ConvertCounts counts{20, 10, 3, 2, 4, {{"rate-missing", 1}, {"row-cut", 12}}};
    counts.imports = 16;
    counts.loadMilliseconds = 1234.5;
    counts.hashMilliseconds = 2.0;
    counts.writeMilliseconds = 0.25;
    return counts;
}

struct Row {
    const char* name;
    ConvertCounts counts;
    dataset::RunEnd end;
    double seconds;
    bool timing;
    const char* text;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

const Row kRows[] = {
    {"AllConverted", Run(4, 4), EndWith("out/index.csv"), 1.0, false,
     "4 files: 4 converted\n1.0 s, 4.0 files a second\nout/index.csv\n"},
    {"OneFile", Run(1, 1), EndWith("out/index.csv"), 0.01, false,
     "1 file: 1 converted\n0.0 s, 100 files a second\nout/index.csv\n"},
    {"Mixed", MixedRun(), EndWith("o\x1bt/index.csv"), 2.0, false,
     "20 files: 10 converted, 3 up to date, 2 imported in part, 4 failed, 1 cancelled (--resume "
     "continues)\n  rate-missing: 1 file\n  row-cut: 12 files\n2.0 s, 8.0 files a "
     "second\no\\x1bt/index.csv\n"},
    {"WithTiming", MixedRun(), EndWith("i"), 2.0, true,
     "20 files: 10 converted, 3 up to date, 2 imported in part, 4 failed, 1 cancelled (--resume "
     "continues)\n  rate-missing: 1 file\n  row-cut: 12 files\n2.0 s, 8.0 files a "
     "second\nload_ms=1234.500\nhash_ms=2.000\nwrite_ms=0.250\nfiles_per_second=8.000\ni\n"},
    {"FullDisk", Run(9, 2), EndWith("", true), 1.0, false,
     "9 files: 2 converted, 7 not converted\n1.0 s, 2.0 files a second\n"},
    {"NothingToDo", ConvertCounts{5, 0, 5, 0, 0, {}}, EndWith("i"), 1.0, false,
     "5 files: 0 converted, 5 up to date\ni\n"},
    {"NothingToTime", ConvertCounts{5, 0, 5, 0, 0, {}}, EndWith("i"), 1.0, true,
     "5 files: 0 converted, 5 up to date\nload_ms=0.000\nhash_ms=0.000\nwrite_ms=0.000\n"
     "files_per_second=0.000\ni\n"},
    {"NoTimeAtAll", Run(1, 1), EndWith("i"), 0.0, false,
     "1 file: 1 converted\n0.0 s, 0.0 files a second\ni\n"},
    {"Minutes", Run(2600, 2600), EndWith("i"), 724.6, false,
     "2600 files: 2600 converted\n12 min 5 s, 3.6 files a second\ni\n"},
    {"Hours", Run(2600, 2600), EndWith("i"), 12299.0, false,
     "2600 files: 2600 converted\n3 h 24 min, 0.2 files a second\ni\n"},
};

class ConvertSummaryText : public testing::TestWithParam<Row> {};

TEST_P(ConvertSummaryText, IsAsExpected) {
    const Row& row = GetParam();
    EXPECT_EQ(cli::ConvertSummary(row.counts, row.end, row.seconds, row.timing), row.text);
}

INSTANTIATE_TEST_SUITE_P(, ConvertSummaryText, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace convert_summary_test
