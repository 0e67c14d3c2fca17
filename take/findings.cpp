#include "take/findings.h"

#include "survey/finding_text.h"

namespace take {

std::vector<std::string> FindingsJson(const std::vector<FileFindings>& files) {
    std::vector<std::string> all;
    for (const FileFindings& file : files)
        for (const survey::Finding& finding : file.findings)
            survey::AppendFindingJson(all.emplace_back(), finding,
                                      files.size() > 1 ? &file.file : nullptr);
    return all;
}

std::vector<std::optional<std::int64_t>> FramesOf(const std::vector<FileFindings>& files) {
    std::vector<std::optional<std::int64_t>> frames;
    for (const FileFindings& file : files)
        for (const survey::Finding& finding : file.findings)
            frames.push_back(finding.frame);
    return frames;
}

FindingInFile RefusalOf(const std::vector<FileFindings>& files) {
    for (const survey::Severity severity : {survey::Severity::Error, survey::Severity::Warning})
        for (const FileFindings& file : files)
            for (const survey::Finding& finding : file.findings)
                if (finding.severity == severity) return {&file, &finding};
    return {};
}

}  // namespace take
