// The one function that the host calls.
#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <iterator>
#include <new>
#include <optional>

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

// The flags first: without memory for a file's name they hold all the same.
void TakeBiovisionArguments(const VARIANT* arguments) {
    g_UserInput.bAddClip = IsTrue(arguments[1]);
    g_UserInput.bUseNulls = IsTrue(arguments[2]);
    g_UserInput.bChainFromParentJoint = IsTrue(arguments[3]);
    g_UserInput.bEffectorToLastBone = IsTrue(arguments[4]);
    g_UserInput.bCreateGroup = IsTrue(arguments[5]);
    g_UserInput.strBVHFile = arguments[0].bstrVal;
}

void TakeAcclaimArguments(const VARIANT* arguments) {
    g_UserInput.bApplyLimits = IsTrue(arguments[2]);
    g_UserInput.bOverrideLength = IsTrue(arguments[3]);
    g_UserInput.dLengthMultiplier = arguments[4].dblVal;
    g_UserInput.bAddClip = IsTrue(arguments[5]);
    g_UserInput.bUseNulls = IsTrue(arguments[6]);
    g_UserInput.bChainFromParentJoint = IsTrue(arguments[7]);
    g_UserInput.bEffectorToLastBone = IsTrue(arguments[8]);
    g_UserInput.bCreateGroup = IsTrue(arguments[9]);
    g_UserInput.strASFFile = arguments[0].bstrVal;
    g_UserInput.strAMCFile = arguments[1].bstrVal;
}

// The host command that makes a clip. Running it takes no memory of the plug-in's.
class AddClip {
  public:
    AddClip() : name_(L"AddClip"), arguments_(6) {}
    // The command is run after a failed import too: it then gets empty references and refuses them.
    void Run(const Zelk::CRef& model, const Zelk::CRef& motion) {
        arguments_[0] = model;
        arguments_[1] = motion;
        Zelk::CValue result;
        Zelk::Application().ExecuteCommand(name_, arguments_, result);
    }

  private:
    Zelk::CString name_;
    Zelk::CValueArray arguments_;
};

struct Command {
    const wchar_t* name;
    void (*takeArguments)(const VARIANT* arguments);
    Zelk::CStatus (*import)(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
};
constexpr Command kCommands[] = {
    {kBiovisionCommand, TakeBiovisionArguments, ImportBiovision},
    {kAcclaimCommand, TakeAcclaimArguments, ImportAcclaim},
};

// Whether there was memory for all of `does`.
template <class Action>
bool HasMemoryFor(Action does) noexcept {
    try {
        does();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// The same; a lack of memory that nobody below has told of is told to the log. Where there is none
// for the line either, nothing is said.
template <class Action>
bool OrOutOfMemory(Action does) noexcept {
    if (HasMemoryFor(does)) return true;
    HasMemoryFor(
        [] { Zelk::Application().LogMessage(L"ERROR: Out of memory", Zelk::zkInfoSeverity); });
    return false;
}

// Whatever the outcome: the log tells it.
void Run(const Command& command, const VARIANT* arguments) noexcept {
    const bool hasArguments = OrOutOfMemory([&] { command.takeArguments(arguments); });
    // Made before the import, which may leave no memory for it.
    std::optional<AddClip> addClip;
    if (g_UserInput.bAddClip) HasMemoryFor([&] { addClip.emplace(); });

    Zelk::CRef model, basePose, motion;
    if (hasArguments) OrOutOfMemory([&] { command.import(model, basePose, motion); });
    if (!g_UserInput.bAddClip) return;
    OrOutOfMemory([&] {
        if (!addClip) addClip.emplace();
        addClip->Run(model, motion);
    });
}

}  // namespace

extern "C" __attribute__((visibility("default"))) std::int32_t ZelkOnCommand(
    const wchar_t* name, const VARIANT* arguments) noexcept {
    const auto* const command =
        std::find_if(std::begin(kCommands), std::end(kCommands),
                     [name](const Command& known) { return std::wcscmp(name, known.name) == 0; });
    if (command == std::end(kCommands)) return Zelk::status::kFail;
    Run(*command, arguments);
    return Zelk::status::kOk;
}
