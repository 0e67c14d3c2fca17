#include "plugin/outcome.h"

#include <algorithm>
#include <cwchar>
#include <string_view>

#include "host/application.h"

namespace {

constexpr std::size_t kMaxBaseName = 256;
constexpr std::size_t kMessageCapacity = 500;

}  // namespace

Zelk::CString BaseName(const Zelk::CString& path) {
    std::wstring_view name = path.GetWideString();
    const std::size_t slash = name.rfind(L'/');
    if (slash != std::wstring_view::npos) name.remove_prefix(slash + 1);
    name = name.substr(0, std::min(name.rfind(L'.'), name.size()));
    wchar_t text[kMaxBaseName + 1] = {};
    name.copy(text, kMaxBaseName);
    return Zelk::CString(text);
}

void LogMissingFileName() {
    Zelk::Application().LogMessage(L"File name not specified", Zelk::zkErrorSeverity);
}

void LogResult(const Zelk::CString& message) {
    Zelk::Application().LogMessage(message, Zelk::zkInfoSeverity);
}

void LogFailure(const CMocapImportBase& importer) {
    std::uint32_t line = 0;
    const Zelk::CString& message = importer.GetLastError(&line, nullptr);
    wchar_t text[kMessageCapacity] = {};
    if (importer.WasParsing())
        std::swprintf(text, kMessageCapacity, L"ERROR (LINE %u): %ls", line + 1,
                      message.GetWideString());
    else
        std::swprintf(text, kMessageCapacity, L"ERROR: %ls", message.GetWideString());
    LogResult(text);
}
