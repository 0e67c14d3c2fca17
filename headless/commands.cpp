#include "headless/commands.h"

#include <new>
#include <utility>

#include "headless/operations.h"
#include "headless/session_state.h"
#include "headless/text.h"

namespace headless {

namespace {

using Arguments = Zelk::CValueArray;
using Type = Zelk::CValue::Type;

bool AreEmptyFrom(const Arguments& arguments, std::uint32_t first) {
    for (std::uint32_t index = first; index < arguments.GetCount(); ++index)
        if (arguments[index].GetType() != Type::Empty) return false;
    return true;
}

Referent ReferentAt(const SceneEditor& editor, const Arguments& arguments, std::uint32_t index) {
    return index < arguments.GetCount() ? editor.Resolve(arguments[index].AsRef()) : Referent();
}

// The model and the action among the first two arguments; null where either is none.
struct ModelAndAction {
    Node* model = nullptr;
    ActionSource* action = nullptr;
    Node* actionOwner = nullptr;
    bool Complete() const { return model != nullptr && action != nullptr; }
};

ModelAndAction Take(const SceneEditor& editor, const Arguments& arguments, std::uint32_t modelAt,
                    std::uint32_t actionAt) {
    ModelAndAction taken;
    if (!AreEmptyFrom(arguments, 2)) return taken;
    const Referent model = ReferentAt(editor, arguments, modelAt);
    if (model.kind == Referent::Kind::Object && model.object->type == ObjectType::Model)
        taken.model = model.object;
    const Referent action = ReferentAt(editor, arguments, actionAt);
    if (action.kind == Referent::Kind::Action) {
        taken.action = action.action;
        taken.actionOwner = action.object;
    }
    return taken;
}

// model, motion, and four that may stay empty
Zelk::CStatus AddClip(const Arguments& arguments) {
    if (Fails(Operation::AddClip)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    const ModelAndAction taken = Take(editor, arguments, 0, 1);
    if (!taken.Complete()) return Zelk::status::kInvalidArgument;
    editor.MakeClip(*taken.model, *taken.action);
    return Zelk::status::kOk;
}

// action, model
Zelk::CStatus ApplyAction(const Arguments& arguments) {
    if (Fails(Operation::ApplyAction)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    const ModelAndAction taken = Take(editor, arguments, 1, 0);
    if (!taken.Complete()) return Zelk::status::kInvalidArgument;
    editor.Apply(*taken.action, *taken.actionOwner, *taken.model);
    return Zelk::status::kOk;
}

// a name; what follows it means nothing to the command
Zelk::CStatus DeleteObj(const Arguments& arguments) {
    if (Fails(Operation::DeleteObj)) return Zelk::status::kFail;
    if (arguments.GetCount() == 0) return Zelk::status::kInvalidArgument;
    const Zelk::CString text = arguments[0].AsString();
    if (text.IsEmpty()) return Zelk::status::kInvalidArgument;
    SceneEditor editor = Editor();
    const std::wstring_view name = View(text);
    if (Property* const property = editor.FindProperty(name)) {
        editor.Delete(*property);
        return Zelk::status::kOk;
    }
    Node* object = editor.FindObject(name);
    if (object == nullptr) object = editor.FindByBareName(name);
    if (object == nullptr) return Zelk::status::kInvalidArgument;
    editor.Delete(*object);
    return Zelk::status::kOk;
}

struct Command {
    std::wstring_view name;
    Zelk::CStatus (*run)(const Arguments& arguments);
};

constexpr Command kCommands[] = {
    {L"AddClip", AddClip},
    {L"ApplyAction", ApplyAction},
    {L"DeleteObj", DeleteObj},
};

Zelk::CStatus Dispatch(const Zelk::CString& name, const Arguments& arguments) {
    if (Fails(Operation::ExecuteCommand)) return Zelk::status::kFail;
    for (const Command& command : kCommands)
        if (command.name == View(name)) return command.run(arguments);
    return Zelk::status::kFail;
}

CommandRecord::Argument Recorded(const Zelk::CValue& value) {
    switch (value.GetType()) {
        case Type::Integer:
            return static_cast<std::int32_t>(value.AsDouble());
        case Type::Double:
            return value.AsDouble();
        case Type::String:
            return value.AsString();
        case Type::Reference: {
            const SceneEditor editor = Editor();
            const Referent referent = editor.Resolve(value.AsRef());
            if (referent.kind == Referent::Kind::None) break;
            return editor.FullNameOf(referent);
        }
        case Type::Empty:
            break;
    }
    return std::monostate();
}

// None without memory: a command is run all the same.
std::vector<CommandRecord::Argument> RecordedArguments(const Arguments& arguments) {
    std::vector<CommandRecord::Argument> recorded;
    try {
        for (std::uint32_t index = 0; index < arguments.GetCount(); ++index)
            recorded.push_back(Recorded(arguments[index]));
    } catch (const std::bad_alloc&) {
        recorded.clear();
    }
    return recorded;
}

// Without memory the session forgets the command, rather than calling one that was run a failure.
void Keep(CommandRecord record) noexcept {
    std::vector<CommandRecord>& commands = SessionAccess::Current().commands;
    try {
        MakeRoom(commands);
    } catch (const std::bad_alloc&) {
        return;
    }
    commands.push_back(std::move(record));
}

}  // namespace

Zelk::CStatus RunCommand(const Zelk::CString& name, const Zelk::CValueArray& arguments) {
    // Before it runs: it may delete what the arguments refer to.
    CommandRecord record{name, RecordedArguments(arguments), Zelk::status::kOutOfMemory};
    try {
        const Zelk::CStatus status = Dispatch(name, arguments);
        record.status = status.GetCode();
        Keep(std::move(record));
        return status;
    } catch (const std::bad_alloc&) {
        Keep(std::move(record));
        throw;
    }
}

}  // namespace headless
