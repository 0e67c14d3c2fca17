#include "tests/survey/bvh_expectation.h"

namespace survey_test {
namespace {

std::string Told(const std::vector<survey::Finding>& findings) {
    std::string told;
    for (const survey::Finding& finding : findings)
        told += std::to_string(finding.line) + ":" + std::to_string(finding.column) + ": " +
                finding.message + " [" + std::string(finding.code) + "]\n";
    return told;
}

// A text written for Purpose::Fix must need no mending.
void ExpectFixed(const std::string& original, survey::Options options) {
    options.purpose = survey::Purpose::Fix;
    const survey::BvhSurvey fixed = survey::SurveyBvh(original, options);
    if (!fixed.mended) return;
    const std::string& text = fixed.mended->Text();
    options.purpose = survey::Purpose::Import;
    options.bones = false;
    const survey::BvhSurvey again = survey::SurveyBvh(text, options);
    EXPECT_FALSE(again.mended) << text;
    for (const survey::Finding& finding : again.findings) {
        EXPECT_FALSE(finding.mended) << finding.message;
        EXPECT_NE(finding.severity, Severity::Error) << finding.message;
    }
}

}  // namespace

void ExpectSurvey(const BvhRow& row, const survey::Options& options) {
    const survey::BvhSurvey found = survey::SurveyBvh(row.text, options);
    SCOPED_TRACE(Told(found.findings));
    ASSERT_EQ(found.findings.size(), row.findings.size());
    for (std::size_t i = 0; i < row.findings.size(); ++i) {
        const survey::Finding& finding = found.findings[i];
        const Expected& expected = row.findings[i];
        EXPECT_EQ(finding.code, expected.code);
        EXPECT_EQ(finding.severity, expected.severity) << finding.code;
        EXPECT_EQ(finding.line, expected.line) << finding.code;
        EXPECT_EQ(finding.column, expected.column) << finding.code;
        EXPECT_EQ(finding.count, expected.count) << finding.code;
        EXPECT_EQ(finding.mended, expected.mended) << finding.code;
        EXPECT_FALSE(finding.message.empty());
    }
    EXPECT_EQ(found.mended != nullptr, !row.mended.empty());
    if (!found.mended) return;
    EXPECT_NE(found.mended->Text().find(row.mended), std::string::npos) << found.mended->Text();
    ExpectFixed(row.text, options);
}

}  // namespace survey_test
