#include "survey/survey.h"

#include <algorithm>

namespace survey {

std::string MendedText::Text() const {
    text::StringSink sink;
    Write(sink);
    return sink.Release();
}

bool FileSurvey::Has(Severity severity) const {
    return std::any_of(findings.begin(), findings.end(),
                       [&](const Finding& finding) { return finding.severity == severity; });
}

}  // namespace survey
