// How a command copies the host's arguments to g_UserInput.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <ostream>
#include <string>

#include "headless/session.h"
#include "plugin/contract.h"
#include "tests/plugin/plugin_library.h"
#include "tests/support/core/session_text.h"

namespace {

namespace acclaim = plugin::acclaim;
namespace biovision = plugin::biovision;
using plugin::kAcclaimCommand;
using plugin::kBiovisionCommand;
using plugin::kFalse;
using plugin::kTrue;
using plugin_test::Acclaim;
using plugin_test::Arguments;
using plugin_test::Biovision;
using plugin_test::Call;
using plugin_test::Input;
using support::Utf8;
using testing::IsEmpty;

constexpr const wchar_t* kNowhere = L"/nonexistent/walk";

class PluginArguments : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(true); }
};

// The whole of g_UserInput as one text.
std::string InputText() {
    const USERINPUT& input = Input();
    std::string text =
        Utf8(input.strASFFile) + "|" + Utf8(input.strAMCFile) + "|" + Utf8(input.strBVHFile) + "|";
    for (const bool flag :
         {input.bAddClip, input.bUseNulls, input.bChainFromParentJoint, input.bEffectorToLastBone,
          input.bCreateGroup, input.bApplyLimits, input.bOverrideLength})
        text += flag ? '1' : '0';
    return text + "|" + std::to_string(input.dLengthMultiplier);
}

struct FlagRow {
    const char* name;
    const wchar_t* command;
    std::size_t index;
    bool USERINPUT::*field;
};
std::ostream& operator<<(std::ostream& out, const FlagRow& row) {
    return out << row.name;
}

const FlagRow kFlagRows[] = {
    {"BiovisionAddClip", kBiovisionCommand, biovision::kAddClip, &USERINPUT::bAddClip},
    {"BiovisionUseNulls", kBiovisionCommand, biovision::kUseNulls, &USERINPUT::bUseNulls},
    {"BiovisionChainFromParentJoint", kBiovisionCommand, biovision::kChainFromParentJoint,
     &USERINPUT::bChainFromParentJoint},
    {"BiovisionEffectorToLastBone", kBiovisionCommand, biovision::kEffectorToLastBone,
     &USERINPUT::bEffectorToLastBone},
    {"BiovisionCreateGroup", kBiovisionCommand, biovision::kCreateGroup, &USERINPUT::bCreateGroup},
    {"AcclaimApplyLimits", kAcclaimCommand, acclaim::kApplyLimits, &USERINPUT::bApplyLimits},
    {"AcclaimOverrideLength", kAcclaimCommand, acclaim::kOverrideLength,
     &USERINPUT::bOverrideLength},
    {"AcclaimAddClip", kAcclaimCommand, acclaim::kAddClip, &USERINPUT::bAddClip},
    {"AcclaimUseNulls", kAcclaimCommand, acclaim::kUseNulls, &USERINPUT::bUseNulls},
    {"AcclaimChainFromParentJoint", kAcclaimCommand, acclaim::kChainFromParentJoint,
     &USERINPUT::bChainFromParentJoint},
    {"AcclaimEffectorToLastBone", kAcclaimCommand, acclaim::kEffectorToLastBone,
     &USERINPUT::bEffectorToLastBone},
    {"AcclaimCreateGroup", kAcclaimCommand, acclaim::kCreateGroup, &USERINPUT::bCreateGroup},
};

class Flag : public testing::TestWithParam<FlagRow> {
  protected:
    void SetUp() override { support::StartSession(true); }

    static std::string TextWith(std::uint16_t word) {
        Arguments arguments = GetParam().command == kBiovisionCommand
                                  ? Biovision(kNowhere).Word(biovision::kUseNulls, kFalse)
                                  : Acclaim(kNowhere, L"");
        EXPECT_EQ(Call(GetParam().command, arguments.Word(GetParam().index, word)), 0u);
        EXPECT_EQ(Input().*GetParam().field, word == kTrue) << word;
        return InputText();
    }
};

TEST_P(Flag, IsSetByAllSixteenBitsAlone) {
    const std::string off = TextWith(0);
    for (const std::uint16_t word :
         std::initializer_list<std::uint16_t>{1, 2, 0x00FF, 0xFF00, 0x7FFF, 0xFFFE})
        EXPECT_EQ(TextWith(word), off) << word;
    EXPECT_NE(TextWith(kTrue), off);
    EXPECT_EQ(TextWith(0), off);
}

INSTANTIATE_TEST_SUITE_P(, Flag, testing::ValuesIn(kFlagRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(PluginArguments, OfEachCommandLeaveTheOthersAlone) {
    Arguments all = Acclaim(L"/none/a.asf", L"/none/m.amc");
    Call(kAcclaimCommand, all.Word(acclaim::kApplyLimits, kTrue)
                              .Word(acclaim::kOverrideLength, kTrue)
                              .Real(acclaim::kLengthMultiplier, 2.5)
                              .Word(acclaim::kCreateGroup, kTrue));
    EXPECT_EQ(Utf8(Input().strASFFile), "/none/a.asf");
    EXPECT_EQ(Utf8(Input().strAMCFile), "/none/m.amc");

    Call(kBiovisionCommand, Biovision(L"/none/w.bvh"));
    EXPECT_EQ(InputText(), "/none/a.asf|/none/m.amc|/none/w.bvh|0100011|2.500000");

    Call(kAcclaimCommand, Acclaim(L"/none/b.asf", L""));
    EXPECT_EQ(InputText(), "/none/b.asf||/none/w.bvh|0000000|1.000000");
}

TEST_F(PluginArguments, HoldTheNumberAsItIs) {
    for (const double value : {0.0, -0.0, -1.5, 1e308, 4.9e-324, HUGE_VAL, std::nan("")}) {
        Call(kAcclaimCommand, Acclaim(kNowhere, L"").Real(acclaim::kLengthMultiplier, value));
        EXPECT_EQ(std::bit_cast<std::uint64_t>(Input().dLengthMultiplier),
                  std::bit_cast<std::uint64_t>(value));
    }
}

TEST_F(PluginArguments, HoldCopiesOfTheTexts) {
    {
        Arguments arguments = Biovision(L"/none/\u6B69\u304F.bvh");
        Call(kBiovisionCommand, arguments);
        arguments.Text(biovision::kFile, L"changed");
    }
    EXPECT_EQ(Utf8(Input().strBVHFile), "/none/\xE6\xAD\xA9\xE3\x81\x8F.bvh");
}

TEST_F(PluginArguments, ReadANullTextAsEmpty) {
    Call(kBiovisionCommand, Biovision(L"/none/w.bvh"));
    EXPECT_EQ(Call(kBiovisionCommand, Biovision(L"").NullText(biovision::kFile)), 0u);
    EXPECT_TRUE(Input().strBVHFile.IsEmpty());
    EXPECT_EQ(support::LogLines().back(), "2: File name not specified");
    Call(kAcclaimCommand,
         Acclaim(L"", L"").NullText(acclaim::kSkeletonFile).NullText(acclaim::kMotionFile));
    EXPECT_TRUE(Input().strASFFile.IsEmpty());
    EXPECT_TRUE(Input().strAMCFile.IsEmpty());
}

// --- names ---

TEST_F(PluginArguments, OfAnUnknownCommandAreNotLookedAt) {
    Call(kAcclaimCommand,
         Acclaim(L"/none/a.asf", L"/none/m.amc").Word(acclaim::kApplyLimits, kTrue));
    Call(kBiovisionCommand, Biovision(L"/none/w.bvh").Word(biovision::kCreateGroup, kTrue));
    const std::string before = InputText();
    support::StartSession(true);
    for (const wchar_t* name :
         {L"", L"biovision import function", L"BIOVISION IMPORT FUNCTION",
          L"Biovision Import Function", L"Biovision Import function ",
          L" Biovision Import function", L"Biovision Import functio", L"Biovision  Import function",
          L"acclaim import function", L"Acclaim Import functions", L"Biovision", L"AddClip"}) {
        EXPECT_EQ(Call(name, Biovision(L"/none/other.bvh").Word(biovision::kAddClip, kTrue)),
                  0x80004005u);
        EXPECT_EQ(Call(name, nullptr), 0x80004005u);
    }
    EXPECT_EQ(InputText(), before);
    EXPECT_THAT(support::LogLines(), IsEmpty());
    EXPECT_THAT(support::BarLines(), IsEmpty());
    EXPECT_THAT(support::CommandLines(), IsEmpty());
    EXPECT_THAT(headless::Session::Current().GetScene().Objects(), IsEmpty());
}

}  // namespace
