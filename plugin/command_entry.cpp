// The only function that the host calls.
#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <iterator>
#include <new>
#include <optional>
#include <type_traits>

#include "host/application.h"
#include "host/status.h"
#include "host/variant.h"
#include "plugin/contract.h"
#include "plugin/import_commands.h"
#include "plugin/user_input.h"

namespace {

// The types and the number of the arguments are not checked, because the host guarantees them.
bool IsTrue(const VARIANT& argument) {
    return argument.boolVal == plugin::kTrue;
}

// The flags are copied first, so that they are correct even if memory runs out while a file name is
// copied.
void CopyBiovisionArguments(const VARIANT* arguments) {
    using namespace plugin::biovision;
    g_UserInput.bAddClip = IsTrue(arguments[kAddClip]);
    g_UserInput.bUseNulls = IsTrue(arguments[kUseNulls]);
    g_UserInput.bChainFromParentJoint = IsTrue(arguments[kChainFromParentJoint]);
    g_UserInput.bEffectorToLastBone = IsTrue(arguments[kEffectorToLastBone]);
    g_UserInput.bCreateGroup = IsTrue(arguments[kCreateGroup]);
    g_UserInput.strBVHFile = arguments[kFile].bstrVal;
}

void CopyAcclaimArguments(const VARIANT* arguments) {
    using namespace plugin::acclaim;
    g_UserInput.bApplyLimits = IsTrue(arguments[kApplyLimits]);
    g_UserInput.bOverrideLength = IsTrue(arguments[kOverrideLength]);
    g_UserInput.dLengthMultiplier = arguments[kLengthMultiplier].dblVal;
    g_UserInput.bAddClip = IsTrue(arguments[kAddClip]);
    g_UserInput.bUseNulls = IsTrue(arguments[kUseNulls]);
    g_UserInput.bChainFromParentJoint = IsTrue(arguments[kChainFromParentJoint]);
    g_UserInput.bEffectorToLastBone = IsTrue(arguments[kEffectorToLastBone]);
    g_UserInput.bCreateGroup = IsTrue(arguments[kCreateGroup]);
    g_UserInput.strASFFile = arguments[kSkeletonFile].bstrVal;
    g_UserInput.strAMCFile = arguments[kMotionFile].bstrVal;
}

// Runs the host command that creates a clip. The constructor allocates the memory for the call, so
// that Run itself allocates none.
class AddClip {
  public:
    AddClip() : name_(L"AddClip"), arguments_(6) {}
    // Run is also called after a failed import. In this case the references are empty, and the host
    // command fails.
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
    void (*copyArguments)(const VARIANT* arguments);
    Zelk::CStatus (*import)(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
};
constexpr Command kCommands[] = {
    {plugin::kBiovisionCommand, CopyBiovisionArguments, ImportBiovision},
    {plugin::kAcclaimCommand, CopyAcclaimArguments, ImportAcclaim},
};

// Calls the action. Returns false if the action throws std::bad_alloc.
template <class Action>
bool Attempt(Action action) noexcept {
    try {
        action();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// Calls the action. If the action throws std::bad_alloc, logs an error and returns false. If there
// is no memory for the log line, nothing is logged.
template <class Action>
bool AttemptOrLog(Action action) noexcept {
    if (Attempt(action)) return true;
    Attempt([] { Zelk::Application().LogMessage(L"ERROR: Out of memory", Zelk::zkInfoSeverity); });
    return false;
}

// Runs the command. The host learns the outcome only from the log.
void Run(const Command& command, const VARIANT* arguments) noexcept {
    const bool hasArguments = AttemptOrLog([&] { command.copyArguments(arguments); });
    // The clip command is prepared before the import, because there may not be enough memory after
    // it.
    std::optional<AddClip> addClip;
    if (g_UserInput.bAddClip) Attempt([&] { addClip.emplace(); });

    Zelk::CRef model, basePose, motion;
    if (hasArguments) AttemptOrLog([&] { command.import(model, basePose, motion); });
    if (!g_UserInput.bAddClip) return;
    AttemptOrLog([&] {
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

static_assert(std::is_convertible_v<decltype(&ZelkOnCommand), plugin::Callback>);
