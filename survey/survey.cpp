#include "survey/survey.h"

#include <algorithm>

namespace survey {

bool FileSurvey::Has(Severity severity) const {
    return std::any_of(findings.begin(), findings.end(),
                       [&](const Finding& finding) { return finding.severity == severity; });
}

}  // namespace survey
