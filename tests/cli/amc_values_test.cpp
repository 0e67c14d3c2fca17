#include "cli/amc_values.h"

#include <gmock/gmock.h>
#include <string>
#include <sys/stat.h>

#include "tests/support/temporary_folder.h"

namespace {

struct AmcText {
    const char* name;
    std::string text;
    std::uint64_t values;
};

std::ostream& operator<<(std::ostream& out, const AmcText& row) {
    return out << row.name;
}

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int index = 0; index < count; ++index)
        all += text;
    return all;
}

class AmcValues : public testing::TestWithParam<AmcText> {};

TEST_P(AmcValues, AreEstimatedFromAFileAndFromMemory) {
    const support::TemporaryFolder folder;
    const std::string path = folder.Write("a.amc", GetParam().text);
    const auto about = testing::AllOf(testing::Ge(GetParam().values - GetParam().values / 100),
                                      testing::Le(GetParam().values + GetParam().values / 100));
    EXPECT_THAT(cli::EstimateAmcValues({path}), about);
    EXPECT_THAT(cli::EstimateAmcValues({"-", GetParam().text}), about);
}

const AmcText kAmcTexts[] = {
    {"Empty", "", 0},
    {"OnlyAHeader", "#!OML:ASF F:\\a b c\n:FULLY-SPECIFIED\n:SAMPLES-PER-SECOND 120\n", 0},
    {"OneFrame", ":DEGREES\n1\nroot 0 0 0 1 2 3\nleg 1\n", 7},
    {"BlanksAndLineEnds", "1\r\n root  0\t0 0 \r\n\r\nleg 1", 4},
    {"NoText", std::string("1\nroot 1 2 3\n\0", 14), 0},
    {"LongerThanTheSample", Repeated("1\nroot 0 0 0 1.5 2.5 3.5\nleg 1 2\n", 100'000), 800'000},
};
INSTANTIATE_TEST_SUITE_P(, AmcValues, testing::ValuesIn(kAmcTexts),
                         [](const auto& row) { return row.param.name; });

TEST(AmcValuesOf, AMissingFileOrAPipeAreNotRead) {
    const support::TemporaryFolder folder;
    EXPECT_EQ(cli::EstimateAmcValues({folder.Path("none.amc")}), 0U);
    ASSERT_EQ(mkfifo(folder.Path("pipe.amc").c_str(), 0600), 0);
    EXPECT_EQ(cli::EstimateAmcValues({folder.Path("pipe.amc")}), 0U);
}

}  // namespace
