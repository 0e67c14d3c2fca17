// What plugin/contract.h promises about log lines, for invented lines and for those of imports.
#include "plugin/contract.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "headless/session.h"
#include "headless/testing.h"
#include "tests/bvh/samples.h"
#include "tests/plugin/plugin_library.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace {

using bvh_test::kChain;
using plugin_test::Acclaim;
using plugin_test::Biovision;
using plugin_test::Call;
using plugin_test::Wide;

constexpr std::optional<std::int32_t> kDefault;
constexpr std::optional<std::int32_t> kError = Zelk::zkErrorSeverity;
constexpr std::optional<std::int32_t> kWarning = Zelk::zkWarningSeverity;
constexpr std::optional<std::int32_t> kInfo = Zelk::zkInfoSeverity;

struct LineRow {
    const char* name;
    std::optional<std::int32_t> severity;
    const wchar_t* text;
    bool isError = false;
    bool isCancel = false;
    std::optional<std::size_t> models = std::nullopt;
};
std::ostream& operator<<(std::ostream& out, const LineRow& row) {
    return out << row.name;
}

const LineRow kLines[] = {
    {"Opening", kDefault, L"Importing Biovision BVH File..."},
    {"Error", kInfo, L"ERROR: Out of memory", true},
    {"ErrorInALine", kInfo, L"ERROR (LINE 7): Expected '{' token", true},
    {"ErrorWithoutMessage", kInfo, L"ERROR: ", true},
    {"MissingFileName", kError, L"File name not specified", true},
    {"MoreThanAMissingFileName", kError, L"File name not specified."},
    {"Cancel", kInfo, L"ERROR: User cancelled command", true, true},
    {"CancelInALine", kInfo, L"ERROR (LINE 90): User cancelled command", true, true},
    {"CancelInTheMiddle", kInfo, L"ERROR: User cancelled command twice", true},
    {"CancelWithoutError", kInfo, L"Why: User cancelled command"},
    {"ErrorAsAWarning", kWarning, L"ERROR: Out of memory"},
    {"ErrorInOtherLetters", kInfo, L"Error: Out of memory"},
    {"ErrorInTheDocumentation", kInfo, L"text\nERROR: none"},
    {"OneModel", kInfo, L"Imported 1 model successfully", false, false, 1},
    {"NoModels", kInfo, L"Imported 0 models successfully", false, false, 0},
    {"ManyModels", kInfo, L"Imported 4294967295 models successfully", false, false, 4294967295},
    {"CountWithoutNumber", kInfo, L"Imported models successfully"},
    {"CountInOtherWords", kInfo, L"Imported 1 models"},
    {"CountAsAWarning", kWarning, L"Imported 1 model successfully"},
    {"Empty", kInfo, L""},
};

class PluginLogLine : public testing::TestWithParam<LineRow> {};

TEST_P(PluginLogLine, IsRecognised) {
    const LineRow& row = GetParam();
    EXPECT_EQ(plugin::IsErrorLine(row.severity, row.text), row.isError);
    EXPECT_EQ(plugin::IsCancelLine(row.severity, row.text), row.isCancel);
    EXPECT_EQ(plugin::CountedModels(row.severity, row.text), row.models);
    EXPECT_EQ(plugin::EndsSkeleton(row.severity), row.severity == kInfo);
}

INSTANTIATE_TEST_SUITE_P(, PluginLogLine, testing::ValuesIn(kLines),
                         [](const auto& row) { return std::string(row.param.name); });

// These values are fixed, because every host relies on them.
TEST(PluginContract, NamesWhatIsFixed) {
    EXPECT_STREQ(plugin::kCallbackSymbol, "ZelkOnCommand");
    EXPECT_STREQ(plugin::kUserInputSymbol, "g_UserInput");
    EXPECT_STREQ(plugin::kBiovisionCommand, L"Biovision Import function");
    EXPECT_STREQ(plugin::kAcclaimCommand, L"Acclaim Import function");
    EXPECT_EQ(plugin::BooleanWord(true), 0xFFFF);
    EXPECT_EQ(plugin::BooleanWord(false), 0);
}

std::wstring_view TextOf(const headless::LogLine& line) {
    return {line.text.GetWideString(), line.text.Length()};
}

// The kind of each line of the session's log: 'x' for a cancelled import, 'e' for another error,
// the number of models, 's' for the end of a skeleton, '.' for any other line.
std::string Judged() {
    std::string all;
    for (const headless::LogLine& line : headless::Session::Current().Log()) {
        const std::wstring_view text = TextOf(line);
        if (plugin::IsCancelLine(line.severity, text))
            all += 'x';
        else if (plugin::IsErrorLine(line.severity, text))
            all += 'e';
        else if (const auto models = plugin::CountedModels(line.severity, text))
            all += std::to_string(*models);
        else
            all += plugin::EndsSkeleton(line.severity) ? 's' : '.';
    }
    return all;
}

class PluginLog : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(true); }

    std::string Import(const std::wstring& path) {
        EXPECT_EQ(Call(plugin::kBiovisionCommand, Biovision(path)), 0u);
        return Judged();
    }
    std::string Import(const std::wstring& asf, const std::wstring& amc) {
        EXPECT_EQ(Call(plugin::kAcclaimCommand, Acclaim(asf, amc)), 0u);
        return Judged();
    }
    std::wstring File(const std::string& name, const std::string& text) {
        return Wide(dir_.Write(name, text));
    }

  private:
    support::TemporaryFolder dir_;
};

const std::string kSkeleton =
    ":version 1.10\n:units\nmass 1\nlength 1\nangle deg\n:documentation\nall of it\n"
    ":root\norder TX TY TZ RX RY RZ\naxis XYZ\nposition 0 0 0\norientation 0 0 0\n"
    ":bonedata\nbegin\nid 1\nname a\ndirection 0 1 0\nlength 1\naxis 0 0 0 XYZ\ndof rx\nend\n"
    ":hierarchy\nbegin\nroot a\nend\n";
const std::string kMotion = ":fully-specified\n:degrees\n1\nroot 0 0 0 0 0 0\na 5\n";

TEST_F(PluginLog, CountsTheModelsOfASuccess) {
    EXPECT_EQ(Import(File("walk.bvh", kChain + kChain)), ".2");
}

TEST_F(PluginLog, TellsAFileThatIsNotThere) {
    EXPECT_EQ(Import(L"/nonexistent/walk.bvh"), ".e");
}

TEST_F(PluginLog, TellsAMissingFileName) {
    EXPECT_EQ(Import(L""), "e");
}

TEST_F(PluginLog, TellsACancelledImport) {
    headless::PressCancelAtPoll(1);
    EXPECT_EQ(Import(File("walk.bvh", kChain)), ".x");
}

TEST_F(PluginLog, CountsTheModelsBeforeAFailure) {
    EXPECT_EQ(Import(File("walk.bvh", kChain + "HIERARCHY ROOT")), ".e1");
}

TEST_F(PluginLog, NamesTheLineOfAnErrorInAFile) {
    Import(File("walk.bvh", "HIERARCHY\n\n}\n"));
    const headless::LogLine& line = headless::Session::Current().Log().back();
    EXPECT_TRUE(TextOf(line).starts_with(std::wstring(plugin::kErrorLineStart) + L"3): "));
}

TEST_F(PluginLog, EndsASkeletonWithItsDocumentation) {
    EXPECT_EQ(Import(File("a.asf", kSkeleton), File("a.amc", kMotion)), ".s");
}

TEST_F(PluginLog, TellsOfTheMotionAfterTheSkeleton) {
    EXPECT_EQ(Import(File("a.asf", kSkeleton), L"/nonexistent/a.amc"), ".se");
    support::StartSession(true);
    EXPECT_EQ(Import(File("a.asf", kSkeleton), File("a.amc", kMotion + "unknown 1\n")), ".s.");
}

TEST_F(PluginLog, TellsOfASkeletonThatFailed) {
    EXPECT_EQ(Import(L"/nonexistent/a.asf", File("a.amc", kMotion)), ".e");
}

}  // namespace
