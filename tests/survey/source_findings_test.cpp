#include "survey/source_findings.h"

#include <gtest/gtest.h>

#include "survey/codes.h"

namespace source_findings_test {

using survey::Severity;
using survey::codes::kByteOrderMark;
using survey::codes::kEmpty;
using survey::codes::kTextEncoding;

struct Row {
    const char* name;
    std::string_view bytes;
    std::string encoding;
    bool readable;
    std::string_view code;  // empty if there must be no finding
    Severity severity = Severity::Note;
};

using namespace std::string_view_literals;
const Row kRows[] = {
    {"Plain", "HIERARCHY", "", true, ""},
    {"Empty", "", "", false, kEmpty, Severity::Error},
    {"NothingButWhiteSpace", " \r\n\x1A"sv, "", false, kEmpty, Severity::Error},
    {"Mark", "\xEF\xBB\xBFHIERARCHY", "", true, kByteOrderMark},
    {"Utf16", "\xFF\xFEH\0I\0"sv, "", true, kTextEncoding},
    {"NamedEncoding", "\xFC", "ISO-8859-1", true, kTextEncoding},
    {"OtherBytes", "\xFC", "", true, ""},
};

class SourceFindings : public testing::TestWithParam<Row> {};

TEST_P(SourceFindings, AreReported) {
    const survey::SourceText source(GetParam().bytes, GetParam().encoding);
    survey::FindingList list(source);
    EXPECT_EQ(survey::ReportSource(list), GetParam().readable);
    const auto findings = list.Sorted();
    ASSERT_EQ(findings.size(), GetParam().code.empty() ? 0U : 1U);
    if (findings.empty()) return;
    EXPECT_EQ(findings[0].code, GetParam().code);
    EXPECT_EQ(findings[0].severity, GetParam().severity);
    EXPECT_EQ(findings[0].mended, GetParam().readable);
}

INSTANTIATE_TEST_SUITE_P(, SourceFindings, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(NameAsUtf8, KeepsUtf8AndReadsOtherBytes) {
    const survey::SourceText source("a Schl\xFCssel b");
    survey::FindingList list(source);
    EXPECT_EQ(survey::NameAsUtf8("H\xC3\xBC", list), "H\xC3\xBC");
    EXPECT_TRUE(list.Sorted().empty());
    EXPECT_EQ(survey::NameAsUtf8(source.Text().substr(2, 9), list), "Schl\xC3\xBCssel");
    EXPECT_EQ(survey::NameAsUtf8(source.Text().substr(2, 9), list), "Schl\xC3\xBCssel");
    const auto findings = list.Sorted();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].count, 2U);
    EXPECT_EQ(findings[0].column, 3U);
    EXPECT_EQ(findings[0].joint, "Schl\xC3\xBCssel");
    EXPECT_EQ(findings[0].severity, Severity::Warning);
}

}  // namespace source_findings_test
