#include "survey/finding_list.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "text/utf8.h"

namespace survey {
namespace {

// The most bytes that a finding's message and a joint's name may have. Both may contain words of
// the file, which can be of any length.
constexpr std::size_t kLongestMessage = 400;
constexpr std::size_t kLongestName = 100;

// Turns a text that may hold any bytes into valid UTF-8 of at most `longest` bytes.
std::string Readable(const std::string& text, std::size_t longest) {
    return text::Shortened(text::ReplaceInvalidUtf8(text), longest);
}

}  // namespace

void FindingList::Add(const Case& added) {
    Finding* known = Find(added.code);
    if (known && known->severity >= added.severity) {
        ++known->count;
        known->mended |= added.mended;
        return;
    }
    Finding finding;
    finding.code = added.code;
    finding.severity = added.severity;
    if (added.at) {
        const Position position = source_.PositionOf(added.at);
        finding.line = position.line;
        finding.column = position.column;
    }
    finding.message = Readable(added.message, kLongestMessage);
    finding.joint = Readable(added.joint, kLongestName);
    finding.mended = added.mended;
    if (!known) {
        findings_.push_back(std::move(finding));
        positions_.push_back(added.at);
        return;
    }
    positions_[static_cast<std::size_t>(known - findings_.data())] = added.at;
    finding.count = known->count + 1;
    finding.mended |= known->mended;
    *known = std::move(finding);
}

bool FindingList::AddAgain(std::string_view code, Severity severity, std::size_t cases) {
    Finding* known = Find(code);
    if (!known || known->severity < severity) return false;
    known->count += cases;
    return true;
}

Finding* FindingList::Find(std::string_view code) {
    const auto found = std::find_if(findings_.begin(), findings_.end(),
                                    [&](const Finding& finding) { return finding.code == code; });
    return found == findings_.end() ? nullptr : &*found;
}

void FindingList::SetFrames(const FrameAt& frameAt) {
    for (std::size_t index = 0; index < findings_.size(); ++index)
        if (positions_[index])
            findings_[index].frame = frameAt(positions_[index], findings_[index].line);
}

bool FindingList::HasErrors() const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [](const Finding& finding) { return finding.severity == Severity::Error; });
}

bool FindingList::HasMended() const {
    return std::any_of(findings_.begin(), findings_.end(),
                       [](const Finding& finding) { return finding.mended; });
}

std::vector<Finding> FindingList::Sorted() const {
    std::vector<Finding> sorted = findings_;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Finding& a, const Finding& b) {
        return std::tie(a.line, a.column) < std::tie(b.line, b.column);
    });
    return sorted;
}

}  // namespace survey
