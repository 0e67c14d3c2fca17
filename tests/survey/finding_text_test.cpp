#include "survey/finding_text.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "survey/codes.h"

namespace {

using survey::Severity;

survey::Finding RowLength() {
    survey::Finding finding;
    finding.code = survey::codes::kRowLength;
    finding.severity = Severity::Error;
    finding.line = 30;
    finding.column = 12;
    finding.count = 3;
    finding.joint = "H\xC3\xBC";
    finding.message = "row 6 has 75 values";
    finding.mended = true;
    return finding;
}

TEST(FindingText, IsALineAsCompilersPrintIt) {
    EXPECT_EQ(survey::FindingLine("takes/walk.bvh", RowLength(), false),
              "takes/walk.bvh:30:12: error: row 6 has 75 values [row-length]\n");
    EXPECT_EQ(survey::FindingText(RowLength()), "30:12: error: row 6 has 75 values [row-length]");
}

TEST(FindingText, OfAWholeFileHasNoLine) {
    EXPECT_EQ(survey::FindingLine("walk.bvh", survey::UnreadableFinding("no such file"), false),
              "walk.bvh: error: no such file [unreadable]\n");
}

TEST(FindingText, NamesEachSeverity) {
    EXPECT_EQ(survey::NameOf(Severity::Note), "note");
    EXPECT_EQ(survey::NameOf(Severity::Warning), "warning");
    EXPECT_EQ(survey::NameOf(Severity::Error), "error");
}

TEST(FindingText, ShowsControlsOnATerminal) {
    survey::Finding finding = RowLength();
    finding.message = "\x1b[31m";
    EXPECT_EQ(survey::FindingLine("a", finding, true), "a:30:12: error: \\x1b[31m [row-length]\n");
}

TEST(FindingText, IsAJsonObject) {
    std::string text;
    const std::string file = "walk.bvh";
    survey::AppendFindingJson(text, RowLength(), &file);
    EXPECT_EQ(nlohmann::json::parse(text), nlohmann::json::parse(R"({"file": "walk.bvh",
        "code": "row-length", "severity": "error", "line": 30, "column": 12, "count": 3,
        "joint": "Hü", "message": "row 6 has 75 values", "mended": true})"));
    text.clear();
    survey::AppendFindingJson(text, RowLength());
    EXPECT_FALSE(nlohmann::json::parse(text).contains("file"));
}

}  // namespace
