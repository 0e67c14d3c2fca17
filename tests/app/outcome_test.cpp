#include "app/outcome.h"

#include <gmock/gmock.h>

namespace {

struct Judged {
    const char* name;
    std::vector<const wchar_t*> lines;
    app::ExitStatus status;
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
    const app::Outcome outcome = app::JudgeImport(GetParam().result, log, GetParam().interrupted);
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
    {"OneModel", {kOpening, kOne}, app::kImported, 1},
    {"ThreeModels", {kOpening, kThree}, app::kImported, 3},
    {"NoCount", {L"Importing Acclaim Files...", L"documentation"}, app::kImported},
    {"Error", {kOpening, kError}, app::kImportFailed},
    {"ErrorWithoutMessage", {L"ERROR: "}, app::kImportFailed},
    {"NoFileName", {L"File name not specified"}, app::kImportFailed},
    {"ErrorInsideALine", {L"documentation\nERROR: none"}, app::kImported},
    {"ErrorThenCount", {kOpening, kError, kOne}, app::kImportedInPart, 1},
    {"CountThenError", {kOne, kError}, app::kImportFailed, 1},
    {"NotQuiteACount", {kError, L"Imported models successfully"}, app::kImportFailed},
    {"CountInOtherWords", {kError, L"Imported 1 models"}, app::kImportFailed},
    {"Cancelled", {kOpening, kCancel}, app::kCancelled},
    {"CancelledWhileParsing", {kOpening, kCancelParsing}, app::kCancelled},
    {"CancelledInTheSecondSection", {kCancelParsing, kOne}, app::kCancelled, 1},
    {"CancelledTooLateForThePlugin", {kOpening, kOne}, app::kCancelled, 1, 0, true},
    {"FailingCallback", {}, app::kImportFailed, std::nullopt, -1},
};
INSTANTIATE_TEST_SUITE_P(, Outcome, testing::ValuesIn(kJudged),
                         [](const auto& row) { return row.param.name; });

}  // namespace
