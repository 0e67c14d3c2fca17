#include "headless/commands.h"
#include "headless/operations.h"
#include "headless/session_state.h"
#include "host/application.h"

namespace Zelk {

using headless::Fails;
using headless::Operation;

Model Application::GetActiveSceneRoot() const {
    if (Fails(Operation::GetActiveSceneRoot)) return Model();
    return Model(CRef(headless::kSceneRootId, headless::part::kSelf));
}

CStatus Application::ExecuteCommand(const CString& name, const CValueArray& arguments,
                                    CValue& result) {
    const CStatus status = headless::RunCommand(name, arguments);
    result = CValue();  // no command returns a value
    return status;
}

void Application::LogMessage(const CString& message, zkSeverityType severity) {
    if (Fails(Operation::LogMessage)) return;
    headless::SessionAccess::Current().AddLog({severity, message});
}

}  // namespace Zelk
