#include "headless/testing.h"

#include <stdexcept>
#include <string>

#include "headless/operations.h"
#include "headless/session_state.h"

namespace headless {

std::array<OperationState, static_cast<std::size_t>(Operation::Count)> operationStates;

namespace {

OperationState& StateOf(std::string_view operation) {
    const std::vector<std::string_view>& names = FaultyOperations();
    for (std::size_t index = 0; index < names.size(); ++index)
        if (names[index] == operation) return operationStates[index];
    throw std::invalid_argument("no such host operation: " + std::string(operation));
}

}  // namespace

void ResetOperations() noexcept {
    operationStates.fill({});
}

void FailOperation(std::string_view operation, std::uint64_t call) {
    OperationState& state = StateOf(operation);
    state.failAt = call == 0 ? 0 : state.calls + call;
}

void ClearFaults() {
    for (OperationState& state : operationStates)
        state.failAt = 0;
}

std::uint64_t OperationCalls(std::string_view operation) {
    return StateOf(operation).calls;
}

const std::vector<std::string_view>& FaultyOperations() {
    static const std::vector<std::string_view> names = {
#define HEADLESS_NAME(name) #name,
        HEADLESS_OPERATIONS(HEADLESS_NAME)
#undef HEADLESS_NAME
    };
    return names;
}

void PressCancelAtPoll(std::uint64_t poll) {
    SessionAccess::Current().pressAtPoll = poll;
}

void SetPressedValue(std::int16_t value) {
    SessionAccess::Current().pressedValue = value;
}

std::uint64_t CancelPolls() {
    return SessionAccess::Current().polls;
}

}  // namespace headless
