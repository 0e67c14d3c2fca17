// The one function that the host calls.
#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <iterator>
#include <new>

#include "host/application.h"
#include "host/variant.h"
#include "plugin/import_commands.h"
#include "plugin/user_input.h"

namespace {

constexpr const wchar_t* kBiovisionCommand = L"Biovision Import function";
constexpr const wchar_t* kAcclaimCommand = L"Acclaim Import function";
constexpr std::uint16_t kVariantTrue = 0xFFFF;

// The type word and the number of arguments are the host's promise and not looked at.
bool IsTrue(const VARIANT& argument) {
    return argument.boolVal == kVariantTrue;
}

void TakeBiovisionArguments(const VARIANT* arguments) {
    g_UserInput.strBVHFile = arguments[0].bstrVal;
    g_UserInput.bAddClip = IsTrue(arguments[1]);
    g_UserInput.bUseNulls = IsTrue(arguments[2]);
    g_UserInput.bChainFromParentJoint = IsTrue(arguments[3]);
    g_UserInput.bEffectorToLastBone = IsTrue(arguments[4]);
    g_UserInput.bCreateGroup = IsTrue(arguments[5]);
}

void TakeAcclaimArguments(const VARIANT* arguments) {
    g_UserInput.strASFFile = arguments[0].bstrVal;
    g_UserInput.strAMCFile = arguments[1].bstrVal;
    g_UserInput.bApplyLimits = IsTrue(arguments[2]);
    g_UserInput.bOverrideLength = IsTrue(arguments[3]);
    g_UserInput.dLengthMultiplier = arguments[4].dblVal;
    g_UserInput.bAddClip = IsTrue(arguments[5]);
    g_UserInput.bUseNulls = IsTrue(arguments[6]);
    g_UserInput.bChainFromParentJoint = IsTrue(arguments[7]);
    g_UserInput.bEffectorToLastBone = IsTrue(arguments[8]);
    g_UserInput.bCreateGroup = IsTrue(arguments[9]);
}

// After a failed import too: the command then gets empty references and refuses them.
void AddClip(const Zelk::CRef& model, const Zelk::CRef& motion) {
    Zelk::CValueArray arguments(6);
    arguments[0] = model;
    arguments[1] = motion;
    Zelk::CValue result;
    Zelk::Application().ExecuteCommand(L"AddClip", arguments, result);
}

struct Command {
    const wchar_t* name;
    void (*takeArguments)(const VARIANT* arguments);
    Zelk::CStatus (*import)(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
};
constexpr Command kCommands[] = {
    {kBiovisionCommand, TakeBiovisionArguments, ImportBiovision},
    {kAcclaimCommand, TakeAcclaimArguments, ImportAcclaim},
};

// `does`, or the log's word for a lack of memory that nobody below has told of.
template <class Action>
void OrOutOfMemory(Action does) {
    try {
        does();
    } catch (const std::bad_alloc&) {
        Zelk::Application().LogMessage(L"ERROR: Out of memory", Zelk::zkInfoSeverity);
    }
}

// Whatever the outcome: the log tells it.
void Run(const Command& command, const VARIANT* arguments) {
    command.takeArguments(arguments);
    Zelk::CRef model, basePose, motion;
    OrOutOfMemory([&] { command.import(model, basePose, motion); });
    if (g_UserInput.bAddClip) AddClip(model, motion);
}

}  // namespace

extern "C" __attribute__((visibility("default"))) std::int32_t ZelkOnCommand(
    const wchar_t* name, const VARIANT* arguments) noexcept {
    const auto* const command =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [name](const Command& known) { return std::wcscmp(name, known.name) == 0; });
    if (command == std::end(kCommands)) return Zelk::status::kFail;
    OrOutOfMemory([&] { Run(*command, arguments); });
    return Zelk::status::kOk;
}
