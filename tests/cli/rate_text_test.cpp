#include "cli/rate_text.h"

#include <gmock/gmock.h>
#include <ostream>

namespace {

struct Speed {
    double framesPerSecond;
    std::optional<double> stated;
    const char* note;
};

std::ostream& operator<<(std::ostream& out, const Speed& row) {
    return out << row.framesPerSecond;
}

class SpeedNote : public testing::TestWithParam<Speed> {};

TEST_P(SpeedNote, NamesALargeChange) {
    EXPECT_EQ(cli::SpeedNote(GetParam().framesPerSecond, GetParam().stated), GetParam().note);
}

const Speed kSpeeds[] = {
    {12, 120.0,
     "--fps 12: the take plays 10 times slower than its file states (120 frames per second)"},
    {120, 30.0,
     "--fps 120: the take plays 4 times faster than its file states (30 frames per second)"},
    {24, 60.0,
     "--fps 24: the take plays 2.5 times slower than its file states (60 frames per second)"},
    {60, 120.0, ""},
    {60, 30.0, ""},
    {60, 60.0, ""},
    {60, 120.00048, ""},
    {120, 59.9999, ""},
    {1, std::nullopt, ""},
};
INSTANTIATE_TEST_SUITE_P(, SpeedNote, testing::ValuesIn(kSpeeds));

}  // namespace
