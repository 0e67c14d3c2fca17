#include "cli/progress_line.h"

#include <gmock/gmock.h>
#include <limits>

#include "cli/columns.h"
#include "text/wide_text.h"

namespace {

using headless::BarEvent;
using Kind = BarEvent::Kind;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ProgressLine : public testing::Test {
  protected:
    std::string text_;
    cli::ProgressLine Line(int columns, int interval = 0) {
        return {columns, std::chrono::milliseconds(interval),
                [this](std::string_view more) { text_ += more; }};
    }
    // The last drawn line, without the control sequence before it.
    std::string Last() const { return text_.substr(text_.rfind("\x1b[K") + 3); }
};

void Begin(cli::ProgressLine& line) {
    line.Receive({Kind::Minimum, 0, {}});
    line.Receive({Kind::Maximum, 32000, {}});
    line.Receive({Kind::Step, 1, {}});
    line.Receive({Kind::Caption, 0, L"Importing Motion..."});
}

TEST_F(ProgressLine, ShowsNothingUntilItIsVisible) {
    cli::ProgressLine line = Line(80);
    Begin(line);
    line.Receive({Kind::Value, 16000, {}});
    EXPECT_EQ(text_, "");
}

TEST_F(ProgressLine, DrawsCaptionAndPercentage) {
    cli::ProgressLine line = Line(80);
    Begin(line);
    line.Receive({Kind::Visible, 1, {}});
    line.Receive({Kind::Value, 16000, {}});
    EXPECT_EQ(Last(), "Importing Motion...  [############            ]  50%");
}

TEST_F(ProgressLine, StaysWithinTheTerminal) {
    for (int columns = 1; columns <= 100; ++columns) {
        cli::ProgressLine line = Line(columns);
        Begin(line);
        line.Receive({Kind::Visible, 1, {}});
        line.Receive({Kind::Value, 32000, {}});
        EXPECT_THAT(Last(), EndsWith("100%"));
        if (columns > 4) {
            EXPECT_LT(Last().size(), static_cast<std::size_t>(columns) + 2) << columns;
        }
    }
}

TEST_F(ProgressLine, ClampsValuesToItsRange) {
    cli::ProgressLine line = Line(80);
    Begin(line);
    line.Receive({Kind::Visible, 1, {}});
    line.Receive({Kind::Value, 50000, {}});
    EXPECT_THAT(Last(), EndsWith("100%"));
    line.Receive({Kind::Value, std::numeric_limits<std::int32_t>::min(), {}});
    EXPECT_THAT(Last(), EndsWith("  0%"));
}

TEST_F(ProgressLine, IsErasedWhenHidden) {
    cli::ProgressLine line = Line(80);
    Begin(line);
    line.Receive({Kind::Visible, 1, {}});
    line.Receive({Kind::Visible, 0, {}});
    EXPECT_THAT(text_, EndsWith("\r\x1b[K"));
}

TEST_F(ProgressLine, IsErasedAtTheEnd) {
    {
        cli::ProgressLine line = Line(80);
        Begin(line);
        line.Receive({Kind::Visible, 1, {}});
    }
    EXPECT_THAT(text_, EndsWith("\r\x1b[K"));
}

TEST_F(ProgressLine, IsNotRedrawnForEveryEvent) {
    cli::ProgressLine line = Line(80, 3'600'000);
    Begin(line);
    line.Receive({Kind::Visible, 1, {}});
    const std::string first = text_;
    EXPECT_THAT(first, HasSubstr("0%"));
    for (int value = 0; value < 32000; ++value)
        line.Receive({Kind::Value, value, {}});
    EXPECT_EQ(text_, first);
}

TEST_F(ProgressLine, ShowsACaptionWithAShareOfItsBar) {
    cli::ProgressLine line = Line(80);
    line.Show(L"Writing walk.glb...", 0.29);
    EXPECT_EQ(Last(), "Writing walk.glb...  [######                  ]  29%");
    line.Show(L"Writing walk.glb...", 1.5);
    EXPECT_THAT(Last(), EndsWith("100%"));
}

TEST_F(ProgressLine, ShowsACaptionAloneWithinTheTerminal) {
    for (int columns = 1; columns <= 30; ++columns) {
        cli::ProgressLine line = Line(columns);
        line.Show(L"Reading walk.bvh...", std::nullopt);
        EXPECT_EQ(Last() == "Reading walk.bvh...", columns >= 20) << columns;
        EXPECT_LE(cli::DisplayWidth(text::DecodeUtf8(Last())), std::max(columns - 1, 1));
    }
}

TEST_F(ProgressLine, IsDrawnAtOnceAfterItWasErased) {
    cli::ProgressLine line = Line(80, 3'600'000);
    line.Show(L"Reading walk.bvh...", std::nullopt);
    line.Erase();
    line.Show(L"Importing Motion...", 0.0);
    EXPECT_THAT(Last(), StartsWith("Importing Motion..."));
}

TEST_F(ProgressLine, EscapesControlsInTheCaption) {
    cli::ProgressLine line = Line(80);
    line.Receive({Kind::Caption, 0, L"a\x1B[2J"});
    line.Receive({Kind::Visible, 1, {}});
    EXPECT_THAT(Last(), StartsWith("a\\x1b[2J"));
}

}  // namespace
