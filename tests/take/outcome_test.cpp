#include "take/outcome.h"

#include <gmock/gmock.h>

namespace {

struct Judged {
    const char* name;
    std::vector<const wchar_t*> lines;
    take::Status status;
    std::optional<std::size_t> models = std::nullopt;
    std::int32_t result = 0;
    bool interrupted = false;
};

std::ostream& operator<<(std::ostream& out, const Judged& row) {
    return out << row.name;
}

class Outcome : public testing::TestWithParam<Judged> {};

TEST_P(Outcome, IsJudgedFromTheLog) {
    std::vector<headless::LogLine> log;
    for (const wchar_t* line : GetParam().lines)
        log.push_back({8, line});
    const take::Outcome outcome = take::JudgeImport(GetParam().result, log, GetParam().interrupted);
    EXPECT_EQ(outcome.status, GetParam().status);
    EXPECT_EQ(outcome.models, GetParam().models);
}

const wchar_t kOpening[] = L"Importing Biovision BVH File...";
const wchar_t kError[] = L"ERROR (LINE 7): Expected '{' token";
const wchar_t kCancel[] = L"ERROR: User cancelled command";
const wchar_t kCancelParsing[] = L"ERROR (LINE 90): User cancelled command";
const wchar_t kOne[] = L"Imported 1 model successfully";
const wchar_t kThree[] = L"Imported 3 models successfully";

const Judged kJudged[] = {
    {"OneModel", {kOpening, kOne}, take::Status::Imported, 1},
    {"ThreeModels", {kOpening, kThree}, take::Status::Imported, 3},
    {"NoCount", {L"Importing Acclaim Files...", L"documentation"}, take::Status::Imported},
    {"Error", {kOpening, kError}, take::Status::Failed},
    {"ErrorWithoutMessage", {L"ERROR: "}, take::Status::Failed},
    {"NoFileName", {L"File name not specified"}, take::Status::Failed},
    {"ErrorInsideALine", {L"documentation\nERROR: none"}, take::Status::Imported},
    {"ErrorThenCount", {kOpening, kError, kOne}, take::Status::ImportedInPart, 1},
    {"CountThenError", {kOne, kError}, take::Status::Failed, 1},
    {"NotQuiteACount", {kError, L"Imported models successfully"}, take::Status::Failed},
    {"CountInOtherWords", {kError, L"Imported 1 models"}, take::Status::Failed},
    {"Cancelled", {kOpening, kCancel}, take::Status::Cancelled},
    {"CancelledWhileParsing", {kOpening, kCancelParsing}, take::Status::Cancelled},
    {"CancelledInTheSecondSection", {kCancelParsing, kOne}, take::Status::Cancelled, 1},
    {"CancelledTooLateForThePlugin", {kOpening, kOne}, take::Status::Cancelled, 1, 0, true},
    {"FailingCallback", {}, take::Status::Failed, std::nullopt, -1},
};
INSTANTIATE_TEST_SUITE_P(, Outcome, testing::ValuesIn(kJudged),
                         [](const auto& row) { return row.param.name; });

TEST(LogSubject, ChangesAfterTheDocumentationOfTheSkeleton) {
    take::LogSubject subject;
    EXPECT_FALSE(subject.IsMotion({4, L"a warning"}));
    EXPECT_FALSE(subject.IsMotion({8, L"documentation"}));
    EXPECT_TRUE(subject.IsMotion({2, L"ERROR (LINE 3): x"}));
}

}  // namespace
