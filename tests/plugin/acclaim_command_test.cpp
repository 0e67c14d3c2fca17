// The Acclaim command as the host calls it: arguments, log, references, clip.
#include <cwchar>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/session.h"
#include "host/status.h"
#include "host/variant.h"
#include "plugin/contract.h"
#include "plugin/import_commands.h"
#include "plugin/user_input.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

extern "C" std::int32_t ZelkOnCommand(const wchar_t* name, const VARIANT* arguments) noexcept;

namespace {

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;

VARIANT Text(const Zelk::CString& text) {
    VARIANT argument{};
    argument.bstrVal = text.GetWideString();
    return argument;
}
VARIANT Word(std::uint16_t word) {
    VARIANT argument{};
    argument.boolVal = word;
    return argument;
}
VARIANT Real(double number) {
    VARIANT argument{};
    argument.dblVal = number;
    return argument;
}
using plugin::kTrue;

class AcclaimCommand : public testing::Test {
  protected:
    void SetUp() override {
        StartSession(true);
        g_UserInput = USERINPUT();
        g_UserInput.bUseNulls = true;
    }
    Zelk::CString File(const std::string& name, const std::string& text) {
        const std::string path = dir.Write(name, text);
        return std::wstring(path.begin(), path.end()).c_str();
    }
    std::int32_t Import() { return ImportAcclaim(model, basePose, motion).GetCode(); }
    static std::string NameOf(const Zelk::CRef& ref) { return Utf8(ZKObject(ref).GetName()); }

    TemporaryFolder dir;
    Zelk::CRef model, basePose, motion;
};

TEST_F(AcclaimCommand, NeedsASkeletonFile) {
    EXPECT_EQ(Import(), -1);
    EXPECT_THAT(LogLines(), ElementsAre("2: File name not specified"));
    EXPECT_THAT(BarLines(), IsEmpty());
}

TEST_F(AcclaimCommand, ImportsASkeletonAlone) {
    g_UserInput.strASFFile = File("my.skel.asf", kSampleAsf);
    EXPECT_EQ(Import(), 0);
    EXPECT_THAT(LogLines(),
                ElementsAre("-: Importing Acclaim Files...", "8: \n  About\n  the sample\n"));
    EXPECT_EQ(NameOf(model), "my.skel");
    EXPECT_EQ(basePose, Zelk::CRef());
    EXPECT_EQ(motion, Zelk::CRef());
}

TEST_F(AcclaimCommand, ImportsAMotionOntoTheSkeleton) {
    g_UserInput.strASFFile = File("skel.asf", kSampleAsf);
    g_UserInput.strAMCFile = File("run.fast.amc", kSampleAmc);
    EXPECT_EQ(Import(), 0);
    EXPECT_THAT(LogLines(),
                ElementsAre("-: Importing Acclaim Files...", "8: \n  About\n  the sample\n"));
    EXPECT_EQ(NameOf(model), "skel");
    EXPECT_EQ(NameOf(basePose), "skel_BasePose");
    EXPECT_EQ(NameOf(motion), "run.fast");
    EXPECT_THAT(SceneProblems(true), IsEmpty());
}

TEST_F(AcclaimCommand, LogsADocumentationThatIsNotThere) {
    g_UserInput.strASFFile = File("skel.asf", ":version 1");
    EXPECT_EQ(Import(), 0);
    EXPECT_THAT(LogLines(), ElementsAre("-: Importing Acclaim Files...", "8: "));
}

TEST_F(AcclaimCommand, ReportsABadSkeletonWithItsLine) {
    g_UserInput.strASFFile = File("skel.asf", ":version 1\n\nlost");
    g_UserInput.strAMCFile = File("run.amc", kSampleAmc);
    EXPECT_EQ(Import(), Zelk::status::kFail);
    EXPECT_THAT(LogLines(),
                ElementsAre("-: Importing Acclaim Files...", "8: ERROR (LINE 3): Invalid keyword"));
    EXPECT_EQ(model, Zelk::CRef());
}

TEST_F(AcclaimCommand, ReportsAMissingFileWithoutALine) {
    g_UserInput.strASFFile = L"/nowhere/skel.asf";
    EXPECT_EQ(Import(), Zelk::status::kFileNotFound);
    EXPECT_EQ(LogLines().back(), "8: ERROR: Failed to read ASF file. Specify a valid file name");
}

// The skeleton stays, and nothing is handed back.
TEST_F(AcclaimCommand, ReportsABadMotionAfterTheDocumentation) {
    g_UserInput.strASFFile = File("skel.asf", kSampleAsf);
    g_UserInput.strAMCFile = File("run.amc", ":fully-specified\n1\nroot 1 2");
    EXPECT_EQ(Import(), Zelk::status::kInvalidData);
    EXPECT_THAT(LogLines(),
                ElementsAre("-: Importing Acclaim Files...", "8: \n  About\n  the sample\n",
                            "8: ERROR (LINE 3): Failed to get animation value"));
    EXPECT_EQ(model, Zelk::CRef());
    EXPECT_EQ(ModelNamed("skel").modelData->actions.size(), 1u);
}

TEST_F(AcclaimCommand, PassesTheOptionsOn) {
    const auto lengthOf = [&](bool overrides) {
        StartSession(true);
        g_UserInput.bOverrideLength = overrides;
        g_UserInput.dLengthMultiplier = 10.0;
        EXPECT_EQ(Import(), 0);
        return ObjectNamed("joint").local[1];
    };
    g_UserInput.strASFFile = File("skel.asf", kSampleAsf);
    EXPECT_EQ(lengthOf(false), 2.0);
    EXPECT_EQ(lengthOf(true), 40.0);
    EXPECT_THAT(ModelNamed("skel").modelData->groups, IsEmpty());
    g_UserInput.bCreateGroup = true;
    g_UserInput.bUseNulls = false;
    g_UserInput.bChainFromParentJoint = true;
    lengthOf(false);
    EXPECT_EQ(ModelNamed("skel").modelData->groups.size(), 1u);
    EXPECT_EQ(ObjectNamed("arm").type, headless::ObjectType::ChainBone);
}

TEST_F(AcclaimCommand, PassesTheLimitsOn) {
    const char* const asf =
        ":version 1\n:root order tx\n:bonedata begin name a\n length 1\n dof |\n"
        " limits (1 2)\n end\n:hierarchy begin\nroot a\nend";
    g_UserInput.strASFFile = File("skel.asf", asf);
    g_UserInput.strAMCFile = File("motion.amc", ":fully-specified\n1\nroot 0\na 9");
    g_UserInput.bUseNulls = false;
    g_UserInput.bChainFromParentJoint = true;
    for (const bool limits : {false, true}) {
        StartSession(true);
        g_UserInput.bApplyLimits = limits;
        EXPECT_EQ(Import(), 0);
        EXPECT_EQ(MotionCurves().at("a.bone.length").values,
                  std::vector<double>{limits ? 2.0 : 9.0});
    }
}

// --- The callback ---

TEST_F(AcclaimCommand, TakesItsTenArguments) {
    const Zelk::CString asf = File("skel.asf", kSampleAsf);
    const Zelk::CString amc = File("run.amc", kSampleAmc);
    g_UserInput.strBVHFile = L"other.bvh";
    const VARIANT arguments[] = {Text(asf),   Text(amc),   Word(kTrue), Word(1),     Real(2.5),
                                 Word(kTrue), Word(kTrue), Word(0),     Word(kTrue), Word(0xFFFE)};
    EXPECT_EQ(ZelkOnCommand(plugin::kAcclaimCommand, arguments), 0);
    EXPECT_EQ(g_UserInput.strASFFile, asf);
    EXPECT_EQ(g_UserInput.strAMCFile, amc);
    EXPECT_EQ(g_UserInput.strBVHFile, Zelk::CString(L"other.bvh"));
    EXPECT_TRUE(g_UserInput.bApplyLimits);
    EXPECT_FALSE(g_UserInput.bOverrideLength);
    EXPECT_EQ(g_UserInput.dLengthMultiplier, 2.5);
    EXPECT_TRUE(g_UserInput.bAddClip);
    EXPECT_TRUE(g_UserInput.bUseNulls);
    EXPECT_FALSE(g_UserInput.bChainFromParentJoint);
    EXPECT_TRUE(g_UserInput.bEffectorToLastBone);
    EXPECT_FALSE(g_UserInput.bCreateGroup);
    EXPECT_EQ(CommandLines().back(), "AddClip(skel, skel.run, -, -, -, -) 0");
}

TEST_F(AcclaimCommand, AddsAClipEvenOfNothing) {
    const Zelk::CString asf = File("skel.asf", kSampleAsf);
    const Zelk::CString none;
    VARIANT arguments[plugin::acclaim::kArgumentCount] = {Text(asf), Text(none)};
    arguments[plugin::acclaim::kAddClip] = Word(kTrue);
    arguments[plugin::acclaim::kUseNulls] = Word(kTrue);
    EXPECT_EQ(ZelkOnCommand(plugin::kAcclaimCommand, arguments), 0);
    EXPECT_THAT(CommandLines(),
                ElementsAre(testing::StartsWith("AddClip(skel, -, -, -, -, -) 0x8")));
    arguments[plugin::acclaim::kSkeletonFile] = Text(none);
    EXPECT_EQ(ZelkOnCommand(plugin::kAcclaimCommand, arguments), 0);
    EXPECT_THAT(CommandLines().back(), testing::StartsWith("AddClip(-, -, -, -, -, -) 0x8"));
}

TEST_F(AcclaimCommand, IsKnownByItsExactName) {
    g_UserInput.strASFFile = L"before";
    const VARIANT arguments[plugin::acclaim::kArgumentCount] = {};
    EXPECT_EQ(ZelkOnCommand(L"acclaim import function", arguments), Zelk::status::kFail);
    EXPECT_EQ(ZelkOnCommand(L"Acclaim Import function ", arguments), Zelk::status::kFail);
    EXPECT_EQ(g_UserInput.strASFFile, Zelk::CString(L"before"));
    EXPECT_THAT(LogLines(), IsEmpty());
}

}  // namespace
