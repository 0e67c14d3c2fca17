#include "app/original_lines.h"

#include <gtest/gtest.h>

#include "headless/text.h"
#include "host/constants.h"
#include "text/wide_text.h"

namespace {

using survey::LineMark;

TEST(OriginalLine, FollowsTheMarks) {
    const std::vector<LineMark> marks = {{1, 3}, {4, 10}, {6, 6}};
    const std::pair<std::size_t, std::size_t> rows[] = {{1, 3}, {3, 5}, {4, 10}, {5, 11}, {9, 9}};
    for (const auto& [mended, original] : rows)
        EXPECT_EQ(app::OriginalLine(marks, mended), original) << mended;
    EXPECT_EQ(app::OriginalLine({}, 7), 7U);
}

headless::LogLine Line(const wchar_t* text, std::int32_t severity = Zelk::zkInfoSeverity) {
    return {severity, Zelk::CString(text)};
}

std::string Text(const headless::LogLine& line) {
    return text::EncodeUtf8(headless::View(line.text));
}

TEST(OriginalLines, AreOfTheFileThatIsRead) {
    app::ImportSurvey survey;
    survey.file = {"07.asf", {{1, 101}}};
    survey.motion = {"07_01.amc", {{1, 1001}}};
    app::OriginalLines lines(survey);
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR (LINE 5): x"))), "ERROR (LINE 105): x");
    // That line was an information, as the documentation is.
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR (LINE 5): x"))), "ERROR (LINE 1005): x");
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR: x"))), "ERROR: x");
    EXPECT_EQ(Text(lines.Restore(Line(L"Imported 1 model"))), "Imported 1 model");
}

TEST(OriginalLines, StayWhereTheFileItselfIsRead) {
    app::ImportSurvey survey;
    survey.file = {"walk.bvh", {}};
    app::OriginalLines lines(survey);
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR (LINE 5): x"))), "ERROR (LINE 5): x");
}

}  // namespace
