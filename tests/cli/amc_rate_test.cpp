#include "cli/amc_rate.h"

#include <gmock/gmock.h>
#include <string>

namespace {

struct Amc {
    const char* name;
    std::string text;
    bool states;
};

std::ostream& operator<<(std::ostream& out, const Amc& row) {
    return out << row.name;
}

class AmcRate : public testing::TestWithParam<Amc> {};

TEST_P(AmcRate, IsStatedOnlyByTheFirstToken) {
    EXPECT_EQ(cli::StatesRate(GetParam().text), GetParam().states);
}

const Amc kAmcs[] = {
    {"Stated", ":SAMPLES-PER-SECOND 120\n:FULLY-SPECIFIED\n", true},
    {"LowerCase", ":samples-per-second 60", true},
    {"AfterComments", "#!OML:ASF\r\n# :FULLY-SPECIFIED\n\n :SAMPLES-PER-SECOND 30\n", true},
    {"CommentBeforeTheNumber", ":SAMPLES-PER-SECOND #\n24\n", true},
    {"Missing", "#!OML:ASF F:\\x\n:FULLY-SPECIFIED\n:DEGREES\n1\n", false},
    {"One", ":SAMPLES-PER-SECOND 1\n", false},
    {"NoNumber", ":SAMPLES-PER-SECOND\n:FULLY-SPECIFIED\n", false},
    {"TooLate", ":FULLY-SPECIFIED\n:SAMPLES-PER-SECOND 120\n", false},
    {"LongerKeyword", ":SAMPLES-PER-SECONDS 120\n", false},
    {"Empty", "", false},
    {"LongToken", std::string(100'000, 'x'), false},
};
INSTANTIATE_TEST_SUITE_P(, AmcRate, testing::ValuesIn(kAmcs),
                         [](const auto& row) { return row.param.name; });

}  // namespace
