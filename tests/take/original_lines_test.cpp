#include "take/original_lines.h"

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
        EXPECT_EQ(take::OriginalLine(marks, mended), original) << mended;
    EXPECT_EQ(take::OriginalLine({}, 7), 7U);
}

headless::LogLine Line(const wchar_t* text, std::int32_t severity = Zelk::zkInfoSeverity) {
    return {severity, Zelk::CString(text)};
}

std::string Text(const headless::LogLine& line) {
    return text::EncodeUtf8(headless::View(line.text));
}

TEST(OriginalLines, AreThoseOfTheSkeletonThenOfTheMotion) {
    const take::LineMarks file = {{1, 101}};
    const take::LineMarks motion = {{1, 1001}};
    take::OriginalLines lines(&file, &motion, true);
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR (LINE 5): x"))), "ERROR (LINE 105): x");
    // The line above had the severity of information, as the skeleton's documentation has. So the
    // lines after it are about the motion.
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR (LINE 5): x"))), "ERROR (LINE 1005): x");
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR: x"))), "ERROR: x");
    EXPECT_EQ(Text(lines.Restore(Line(L"Imported 1 model"))), "Imported 1 model");
}

TEST(OriginalLines, AreNotChangedWithoutAMendedText) {
    take::OriginalLines lines(nullptr, nullptr, false);
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR (LINE 5): x"))), "ERROR (LINE 5): x");
}

// A BVH import also logs a line of information before its errors; it has no second file.
TEST(OriginalLines, AreThoseOfTheOnlyFile) {
    const take::LineMarks file = {{1, 101}};
    take::OriginalLines lines(&file, nullptr, false);
    lines.Restore(Line(L"Importing Biovision BVH File..."));
    EXPECT_EQ(Text(lines.Restore(Line(L"ERROR (LINE 5): x"))), "ERROR (LINE 105): x");
}

}  // namespace
