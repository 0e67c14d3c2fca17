#include "survey/finding_text.h"

#include <fmt/format.h>

#include "survey/codes.h"
#include "text/escapes.h"
#include "text/json_text.h"
#include "text/wide_text.h"

namespace survey {

Finding UnreadableFinding(const std::string& problem) {
    Finding finding;
    finding.code = codes::kUnreadable;
    finding.severity = Severity::Error;
    finding.message = problem;
    return finding;
}

std::string_view NameOf(Severity severity) {
    switch (severity) {
        case Severity::Note:
            return "note";
        case Severity::Warning:
            return "warning";
        case Severity::Error:
            break;
    }
    return "error";
}

std::string FindingText(const Finding& finding) {
    std::string text;
    if (finding.line > 0) text = fmt::format("{}:{}: ", finding.line, finding.column);
    return text +
           fmt::format("{}: {} [{}]", NameOf(finding.severity), finding.message, finding.code);
}

std::string FindingLine(const std::string& file, const Finding& finding, bool escapeControls) {
    const std::string separator = finding.line > 0 ? ":" : ": ";
    const std::string line = file + separator + FindingText(finding);
    // Names may hold line feeds; escapes keep the finding on one line.
    const std::wstring wide = text::DecodeUtf8(line);
    return (escapeControls ? text::EncodeUtf8(text::EscapeControls(wide)) : line) + '\n';
}

void AppendFindingJson(std::string& out, const Finding& finding, const std::string* file) {
    const auto string = [&](std::string_view key, std::string_view value) {
        out += fmt::format(R"("{}": )", key);
        text::AppendJsonString(out, value);
        out += ", ";
    };
    out += '{';
    if (file) string("file", *file);
    string("code", finding.code);
    string("severity", NameOf(finding.severity));
    out += fmt::format(R"("line": {}, "column": {}, "count": {}, )", finding.line, finding.column,
                       finding.count);
    string("joint", finding.joint);
    string("message", finding.message);
    out += fmt::format(R"("mended": {}}})", finding.mended);
}

}  // namespace survey
