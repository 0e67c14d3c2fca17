// The operations of the host that the plug-in can call. The calls of each operation are counted,
// and a test can make one call fail.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace headless {

// Tests refer to an operation by the name of its enumerator.
#define HEADLESS_OPERATIONS(OPERATION) \
    OPERATION(GetActiveSceneRoot)      \
    OPERATION(ExecuteCommand)          \
    OPERATION(AddClip)                 \
    OPERATION(ApplyAction)             \
    OPERATION(DeleteObj)               \
    OPERATION(LogMessage)              \
    OPERATION(GetInteractive)          \
    OPERATION(Create)                  \
    OPERATION(GetProgressBar)          \
    OPERATION(PutMinimum)              \
    OPERATION(PutMaximum)              \
    OPERATION(PutStep)                 \
    OPERATION(PutValue)                \
    OPERATION(PutCaption)              \
    OPERATION(PutVisible)              \
    OPERATION(GetCancelPressed)        \
    OPERATION(GetName)                 \
    OPERATION(PutName)                 \
    OPERATION(GetFullName)             \
    OPERATION(GetParent)               \
    OPERATION(GetModel)                \
    OPERATION(GetParameters)           \
    OPERATION(PutParameterValue)       \
    OPERATION(GetItem)                 \
    OPERATION(GetValue)                \
    OPERATION(GetParameterValue)       \
    OPERATION(PutTransform)            \
    OPERATION(GetLocal)                \
    OPERATION(GetKinematics)           \
    OPERATION(PutInterpolation)        \
    OPERATION(SetKeys)                 \
    OPERATION(AddFCurveParameter)      \
    OPERATION(AddCustomProperty)       \
    OPERATION(AddNull)                 \
    OPERATION(AddModel)                \
    OPERATION(Add2DChain)              \
    OPERATION(AddChild)                \
    OPERATION(GetEffector)             \
    OPERATION(GetBones)                \
    OPERATION(AddBone)                 \
    OPERATION(AddActionSource)         \
    OPERATION(AddSourceItem)           \
    OPERATION(AddGroup)

enum class Operation : std::uint8_t {
#define HEADLESS_ENUMERATOR(name) name,
    HEADLESS_OPERATIONS(HEADLESS_ENUMERATOR)
#undef HEADLESS_ENUMERATOR
        Count
};

struct OperationState {
    std::uint64_t calls = 0;
    std::uint64_t failAt = 0;  // the call that fails, counted like `calls`, from 1; 0: none
};

extern std::array<OperationState, static_cast<std::size_t>(Operation::Count)> operationStates;

// Counts a call of the operation. If the result is true, the operation must fail and change
// nothing.
inline bool Fails(Operation operation) noexcept {
    OperationState& state = operationStates[static_cast<std::size_t>(operation)];
    return ++state.calls == state.failAt;
}

// Removes all faults and sets all counts to 0.
void ResetOperations() noexcept;

}  // namespace headless
