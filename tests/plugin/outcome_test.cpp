#include "plugin/outcome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace {

using support::LogLines;
using testing::ElementsAre;

struct BaseRow {
    const char* name;
    std::wstring path;
    std::wstring base;
};
std::ostream& operator<<(std::ostream& out, const BaseRow& row) {
    return out << row.name;
}

const BaseRow kBaseRows[] = {
    {"Plain", L"walk.bvh", L"walk"},
    {"Absolute", L"/home/me/walk.bvh", L"walk"},
    {"Relative", L"../takes/walk.bvh", L"walk"},
    {"NoExtension", L"/takes/walk", L"walk"},
    {"DotInTheFolder", L"/takes.v2/walk", L"walk"},
    {"TwoExtensions", L"/takes/walk.tar.gz", L"walk.tar"},
    {"DotAtTheEnd", L"walk.", L"walk"},
    {"DotsAlone", L"..", L"."},
    {"Hidden", L"/takes/.bvh", L""},
    {"Folder", L"/takes/", L""},
    {"Root", L"/", L""},
    {"Empty", L"", L""},
    {"TwoSlashes", L"//walk.bvh", L"walk"},
    {"Japanese", L"/\u6B69/\u6B69\u304F.bvh", L"\u6B69\u304F"},
    {"AtMost256Characters", L"/takes/" + std::wstring(300, L'n') + L".bvh",
     std::wstring(256, L'n')},
    {"Exactly256Characters", std::wstring(256, L'n') + L".bvh", std::wstring(256, L'n')},
};

class BaseNameTable : public testing::TestWithParam<BaseRow> {};

TEST_P(BaseNameTable, IsWithoutFolderAndLastExtension) {
    EXPECT_EQ(BaseName(GetParam().path.c_str()).GetWideString(), GetParam().base);
}

INSTANTIATE_TEST_SUITE_P(, BaseNameTable, testing::ValuesIn(kBaseRows),
                         [](const auto& row) { return std::string(row.param.name); });

class Importer : public CMocapImportBase {
  public:
    Importer() : CMocapImportBase(MOCAP_FORMAT_BIOVISION) {}
    using CMocapImportBase::parsing;
    using CMocapImportBase::RecordError;
    using CMocapImportBase::stringFile;
};

class Outcome : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }
};

TEST_F(Outcome, OfAFailedParseHasALineFromOne) {
    const support::TemporaryFolder dir;
    const std::string path = dir.Write("file", "a\nb\nc");
    Importer importer;
    ASSERT_TRUE(importer.stringFile.ReadFile(std::wstring(path.begin(), path.end()).c_str()));
    importer.parsing = true;
    importer.RecordError(L"at the start");
    LogFailure(importer);
    ASSERT_TRUE(importer.stringFile.SetPosition(4));
    importer.RecordError(L"at the end");
    LogFailure(importer);
    importer.parsing = false;
    LogFailure(importer);
    EXPECT_THAT(LogLines(), ElementsAre("8: ERROR (LINE 1): at the start",
                                        "8: ERROR (LINE 3): at the end", "8: ERROR: at the end"));
}

TEST_F(Outcome, WithoutAMessageIsAnErrorAllTheSame) {
    LogFailure(Importer());
    EXPECT_THAT(LogLines(), ElementsAre("8: ERROR: "));
}

TEST_F(Outcome, KeepsCharactersOfEveryLanguage) {
    Importer importer;
    importer.RecordError(L"\u53F3\u8155 100% %s");
    LogFailure(importer);
    EXPECT_THAT(LogLines(), ElementsAre("8: ERROR: \xE5\x8F\xB3\xE8\x85\x95 100% %s"));
}

TEST_F(Outcome, HasItsSeverities) {
    LogMissingFileName();
    LogResult(L"text");
    EXPECT_THAT(LogLines(), ElementsAre("2: File name not specified", "8: text"));
}

}  // namespace
