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

// The model and the action that the first two arguments refer to, and the owner of the action.
// `model` is null if the argument for it does not refer to a model. `action` and `actionOwner` are
// null if the argument for the action does not refer to an action. All three are null if an
// argument after the first two is not empty.
struct ModelAndAction {
    Node* model = nullptr;
    ActionSource* action = nullptr;
    Node* actionOwner = nullptr;
    bool Complete() const { return model != nullptr && action != nullptr; }
};

ModelAndAction FindModelAndAction(const SceneEditor& editor, const Arguments& arguments,
                                  std::uint32_t modelIndex, std::uint32_t actionIndex) {
    ModelAndAction found;
    if (!AreEmptyFrom(arguments, 2)) return found;
    const Referent model = ReferentAt(editor, arguments, modelIndex);
    if (model.kind == Referent::Kind::Object && model.object->type == ObjectType::Model)
        found.model = model.object;
    const Referent action = ReferentAt(editor, arguments, actionIndex);
    if (action.kind == Referent::Kind::Action) {
        found.action = action.action;
        found.actionOwner = action.object;
    }
    return found;
}

// Arguments: the model and the action that is the motion. Any further arguments must be empty.
Zelk::CStatus AddClip(const Arguments& arguments) {
    if (Fails(Operation::AddClip)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    const ModelAndAction found = FindModelAndAction(editor, arguments, 0, 1);
    if (!found.Complete()) return Zelk::status::kInvalidArgument;
    editor.CreateClip(*found.model, *found.action);
    return Zelk::status::kOk;
}

// Arguments: the action and the model. Any further arguments must be empty.
Zelk::CStatus ApplyAction(const Arguments& arguments) {
    if (Fails(Operation::ApplyAction)) return Zelk::status::kFail;
    SceneEditor editor = Editor();
    const ModelAndAction found = FindModelAndAction(editor, arguments, 1, 0);
    if (!found.Complete()) return Zelk::status::kInvalidArgument;
    editor.Apply(*found.action, *found.actionOwner, *found.model);
    return Zelk::status::kOk;
}

// Arguments: the name of a property or an object. Any further arguments are ignored.
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

// Returns an empty vector when memory runs out, so that the command can still be run.
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

// When memory runs out, the command is not recorded. Failing would be wrong, because the command
// has been run.
void Record(CommandRecord record) noexcept {
    std::vector<CommandRecord>& commands = SessionAccess::Current().commands;
    try {
        ReserveRoom(commands);
    } catch (const std::bad_alloc&) {
        return;
    }
    commands.push_back(std::move(record));
}

}  // namespace

Zelk::CStatus RunCommand(const Zelk::CString& name, const Zelk::CValueArray& arguments) {
    // The arguments are recorded before the command runs, because the command may delete what they
    // refer to.
    CommandRecord record{name, RecordedArguments(arguments), Zelk::status::kOutOfMemory};
    try {
        const Zelk::CStatus status = Dispatch(name, arguments);
        record.status = status.GetCode();
        Record(std::move(record));
        return status;
    } catch (const std::bad_alloc&) {
        Record(std::move(record));
        throw;
    }
}

}  // namespace headless
