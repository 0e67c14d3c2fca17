// The results of the Biovision import: its status and the three references.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include "host/scene_objects.h"
#include "host/status.h"
#include "plugin/import_commands.h"
#include "plugin/user_input.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace {

using bvh_test::kChain;
using bvh_test::kStill;
using bvh_test::kTree;
using namespace Zelk::status;

struct Row {
    const char* name;
    std::string file;  // the text of the file; if it is empty, there is no file
    std::int32_t status;
    // The names of what the references refer to; empty for an empty reference.
    const char* model = "";
    const char* basePose = "";
    const char* motion = "";
};
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const std::string kBroken = "HIERARCHY ROOT a { OFFSET 0 0 x";

const Row kRows[] = {
    {"Imported", kChain, kOk, "take", "take_BasePose", "take_Motion"},
    {"ImportedWithoutMotion", kStill, kOk, "take", "take_BasePose", "take_Motion"},
    {"TwoSections", kChain + kTree, kOk, "take1", "take1_BasePose", "take1_Motion"},
    {"SecondSectionBroken", kChain + kBroken, kOk, "take", "take_BasePose", "take_Motion"},
    {"FirstSectionBroken", kBroken, kFail},
    {"NoFile", "", kFileNotFound},
    {"OtherFile", "hello", kIncompatibleFile},
};

class ImportBiovisionResult : public testing::TestWithParam<Row> {
  protected:
    void SetUp() override {
        support::StartSession(true);
        g_UserInput = USERINPUT();
        g_UserInput.bUseNulls = true;
    }
    std::int32_t Import() { return ImportBiovision(model_, basePose_, motion_).GetCode(); }
    static std::string NameOf(const Zelk::CRef& ref) {
        return ref == Zelk::CRef() ? "" : support::Utf8(ZKObject(ref).GetName());
    }

    Zelk::CRef model_, basePose_, motion_;
};

TEST_P(ImportBiovisionResult, IsAsExpected) {
    const support::TemporaryFolder dir;
    const std::string path =
        GetParam().file.empty() ? "/nowhere/take.bvh" : dir.Write("take.bvh", GetParam().file);
    g_UserInput.strBVHFile = std::wstring(path.begin(), path.end()).c_str();
    EXPECT_EQ(Import(), GetParam().status);
    EXPECT_EQ(NameOf(model_), GetParam().model);
    EXPECT_EQ(NameOf(basePose_), GetParam().basePose);
    EXPECT_EQ(NameOf(motion_), GetParam().motion);
}

INSTANTIATE_TEST_SUITE_P(, ImportBiovisionResult, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST_F(ImportBiovisionResult, IsAllBitsSetWithoutAFileName) {
    EXPECT_EQ(Import(), -1);
    EXPECT_THAT(support::LogLines(), testing::ElementsAre("2: File name not specified"));
    EXPECT_EQ(model_, Zelk::CRef());
}

}  // namespace
