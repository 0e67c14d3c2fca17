#include "mocap/mocap_parser.h"

#include <new>

#include "host/status.h"

using namespace Zelk::status;

std::wstring ExceededAllowance(const wchar_t* what, const FileAllowance& allowance) {
    return std::wstring(L"The file asks for more ") + what + L" than its size allows (limit " +
           std::to_wstring(allowance.Limit()) + L")";
}

const wchar_t* const MocapParser::kOutOfMemoryMessage = L"Out of memory";

std::int32_t MocapParser::Fail(std::int32_t status, const wchar_t* message) noexcept {
    error = {message, stringFile.GetCurrentLine(), stringFile.GetCurrentColumn()};
    return status;
}

std::int32_t MocapParser::FailForMemory() noexcept {
    return Fail(kOutOfMemory, kOutOfMemoryMessage);
}

std::int32_t MocapParser::FailForCount(const wchar_t* what, const FileAllowance& allowance) {
    exceeded = ExceededAllowance(what, allowance);
    return Fail(kOutOfMemory, exceeded.c_str());
}

std::int32_t MocapParser::FailForDerivedNames() {
    return FailForCount(L"characters of derived names", allowances.derivedNames);
}

std::int32_t MocapParser::FailForCancel() noexcept {
    return Fail(kCancelled, L"User cancelled command");
}

bool MocapParser::CheckCancelled() {
    if (!monitor.IsCancelled()) return false;
    FailForCancel();
    return true;
}

MOCAPMODEL* MocapParser::AppendNode() {
    if (!allowances.nodes.Reserve()) {
        FailForCount(L"nodes", allowances.nodes);
        return nullptr;
    }
    try {
        skeleton.models.push_back(std::make_unique<MOCAPMODEL>());
    } catch (const std::bad_alloc&) {
        FailForMemory();
        return nullptr;
    }
    return skeleton.models.back().get();
}
