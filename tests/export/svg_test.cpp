// Contact sheets. The picture itself has to be looked at; this holds what can be counted.
#include "export/svg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/sheet_layout.h"
#include "tests/export/exported.h"
#include "tests/support/bvh_random.h"
#include "text/byte_sink.h"

namespace svg_test {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr std::size_t kMostBytes = 60'000;

std::string Sheet(const exporters::Options& options = {},
                  const std::vector<std::string>& codes = {}) {
    text::StringSink out;
    exporters::WriteSvg(out, exported::CurrentScene(), options, codes);
    return out.Bytes();
}

std::size_t CountOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

// A figure that moves by `step` along the x axis in each frame.
std::string Mover(const std::string& name, double step, int frames) {
    std::string text = "HIERARCHY\nROOT " + name +
                       "\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
                       "Xrotation Yrotation\nEnd Site\n{\nOFFSET 0 170 0\n}\n}\nMOTION\nFrames: " +
                       std::to_string(frames) + "\nFrame Time: 0.1\n";
    for (int frame = 0; frame < frames; ++frame)
        text += std::to_string(step * frame) + " 0 0 0 0 0\n";
    return text;
}

TEST(Svg, ShowsEightPosesAndTheFacts) {
    ASSERT_TRUE(exported::Import(exported::Samples()[0]));
    const std::string sheet = Sheet({}, {"rotation-order", "rate-missing"});
    EXPECT_THAT(sheet, StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox="));
    EXPECT_THAT(sheet, EndsWith("</svg>\n"));
    EXPECT_EQ(CountOf(sheet, "<g opacity="), 8u);
    EXPECT_EQ(CountOf(sheet, "<circle class=\"m\""), 8u);  // on the path from above
    EXPECT_EQ(CountOf(sheet, "<circle class=\"h\""), 8u);  // heads
    EXPECT_THAT(sheet, HasSubstr("257 frames"));
    EXPECT_THAT(sheet, HasSubstr("4.28 s"));
    EXPECT_THAT(sheet, HasSubstr("60/s"));
    EXPECT_THAT(sheet, HasSubstr("1.74 m"));
    EXPECT_THAT(sheet, HasSubstr("rotation-order rate-missing"));
    EXPECT_LE(sheet.size(), kMostBytes);
}

TEST(Svg, IsTheSameForTheSameScene) {
    ASSERT_TRUE(exported::Import(exported::Samples()[1]));
    EXPECT_EQ(Sheet(), Sheet());
}

TEST(Svg, ShowsOnePoseWithoutMotion) {
    ASSERT_TRUE(exported::Import({exported::Samples()[1][0]}));
    const std::string sheet = Sheet();
    EXPECT_EQ(CountOf(sheet, "<g opacity="), 1u);
    EXPECT_THAT(sheet, HasSubstr("no motion"));
    EXPECT_THAT(sheet, Not(HasSubstr("class=\"m\"")));
}

TEST(Svg, WritesNamesAsText) {
    ASSERT_TRUE(exported::ImportText(Mover("<img/src=x/onerror=alert(1)>", 0, 2)));
    EXPECT_THAT(Sheet(), Not(HasSubstr("<img")));
    const_cast<headless::Object*>(exported::CurrentScene().Models().front())->name =
        Zelk::CString(L"</title><script>alert(1)</script>");
    const std::string sheet = Sheet({}, {"<b>"});
    EXPECT_THAT(sheet, Not(HasSubstr("<script")));
    EXPECT_THAT(sheet, Not(HasSubstr("<b>")));
    EXPECT_THAT(sheet, HasSubstr("&lt;/title&gt;&lt;script&gt;"));
}

TEST(Svg, StaysSmallWithManyJointsAndFindings) {
    std::string text =
        "HIERARCHY\nROOT J\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
        "Xrotation Yrotation\n";
    for (int joint = 0; joint < 3000; ++joint)
        text += "End Site\n{\nOFFSET " + std::to_string(joint % 71) + " 170 " +
                std::to_string(joint % 13) + "\n}\n";
    text += "}\nMOTION\nFrames: 9\nFrame Time: 0.1\n";
    for (int frame = 0; frame < 9; ++frame)
        text += std::to_string(frame * 50) + " 0 0 1 2 3\n";
    ASSERT_TRUE(exported::ImportText(text));
    const std::string sheet = Sheet({}, std::vector<std::string>(100, "number-not-finite"));
    EXPECT_LE(sheet.size(), kMostBytes);
    EXPECT_THAT(sheet, HasSubstr("number-not-finite +9"));
}

TEST(Svg, IsWrittenOfAnySkeleton) {
    for (int seed = 0; seed < 40; ++seed) {
        ASSERT_TRUE(exported::ImportText(support::RandomBvh(seed)));
        const std::string sheet = Sheet();
        EXPECT_LE(sheet.size(), kMostBytes);
        EXPECT_THAT(sheet, Not(HasSubstr("nan")));
        EXPECT_THAT(sheet, Not(HasSubstr("inf")));
    }
}

exporters::SheetLayout Layout() {
    return exporters::ArrangeSheet(exporters::Table(exported::CurrentScene(), {}, false), {}, {});
}

// The poses of a figure that walks on follow its path; those of one that stays are side by side.
TEST(SheetLayout, PlacesPosesAlongThePath) {
    ASSERT_TRUE(exported::ImportText(Mover("Hips", -40, 15)));
    const exporters::SheetLayout walk = Layout();
    ASSERT_EQ(walk.poses.size(), 8u);
    for (std::size_t pose = 1; pose < 8; ++pose)
        EXPECT_GT(walk.poses[pose][0].x, walk.poses[pose - 1][0].x);
    ASSERT_TRUE(exported::ImportText(Mover("Hips", 0.1, 15)));
    const exporters::SheetLayout still = Layout();
    const double step = still.poses[1][0].x - still.poses[0][0].x;
    for (std::size_t pose = 1; pose < 8; ++pose)
        EXPECT_NEAR(still.poses[pose][0].x - still.poses[pose - 1][0].x, step, 1e-9);
}

TEST(SheetLayout, KeepsPosesInsideTheirArea) {
    for (const auto& files : exported::Samples()) {
        ASSERT_TRUE(exported::Import(files));
        for (const auto& pose : Layout().poses) {
            for (const exporters::SheetPoint& point : pose) {
                EXPECT_GE(point.x, -1e-6);
                EXPECT_LE(point.x, exporters::kSheetWidth + 1e-6);
                EXPECT_GE(point.y, -1e-6);
                EXPECT_LE(point.y, exporters::kSheetHeight + 1e-6);
            }
        }
    }
}

// A figure that stands still has no direction, and a rest pose with spread arms is upright.
TEST(SheetLayout, FindsAnUprightViewOfARestPose) {
    ASSERT_TRUE(exported::ImportText(
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 0\nEnd Site\n{\nOFFSET 0 150 0\n}\nEnd "
        "Site\n{\nOFFSET 90 100 0\n}\nEnd Site\n{\nOFFSET -90 100 0\n}\n}\n"));
    const exporters::SheetLayout layout = Layout();
    ASSERT_EQ(layout.poses.size(), 1u);
    EXPECT_NEAR(layout.poses[0][0].y - layout.poses[0][1].y, exporters::kSheetHeight, 1e-9);
}

}  // namespace svg_test
