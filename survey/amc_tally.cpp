#include "survey/amc_tally.h"

#include <algorithm>

#include "survey/acclaim_words.h"
#include "survey/codes.h"
#include "survey/source_findings.h"
#include "text/number_text.h"

namespace survey {
namespace {

constexpr std::size_t kNamesListed = 12;   // the most unknown names that a message lists
constexpr std::size_t kNamesKept = 1000;   // the most unknown names whose rows are counted
constexpr std::size_t kLongestShown = 40;  // the most bytes of a word that a message shows
// An oddity is mended if at most one frame in kMendedShare has it. If the motion has at least
// kFramesForOne frames, an oddity of a single frame is always mended.
constexpr std::size_t kMendedShare = 100;
constexpr std::size_t kFramesForOne = 10;
// A motion is refused if more than one value in kNotFiniteShare is not a finite number.
constexpr std::size_t kNotFiniteShare = 4;

bool AreFew(std::size_t count, std::size_t frames) {
    return count * kMendedShare <= frames || (count == 1 && frames >= kFramesForOne);
}

std::string Quoted(std::string_view word) {
    return "\"" + std::string(word.substr(0, kLongestShown)) + "\"";
}

std::string Frames(std::size_t count) {
    return count == 1 ? "1 frame" : std::to_string(count) + " frames";
}

}  // namespace

std::string AmcTally::NameOf(const AmcEvent& event) const {
    return event.bone == kNoBone ? std::string() : skeleton_.bones[event.bone].name;
}

void AmcTally::AddFinding(std::string_view code, Severity severity, const AmcEvent& event,
                          const std::string& message, bool mended) {
    findings_.Add({code, severity, event.at.data(), message, NameOf(event), mended});
}

void AmcTally::Add(const std::vector<AmcEvent>& events) {
    std::size_t missing = 0;
    const AmcEvent* fewer = nullptr;
    const AmcEvent* more = nullptr;
    for (const AmcEvent& event : events) {
        if (event.kind == AmcEvent::Missing)
            missing = event.count;
        else if (event.kind == AmcEvent::Fewer)
            fewer = fewer ? fewer : &event;
        else if (event.kind == AmcEvent::More)
            more = more ? more : &event;
        else
            AddEvent(event);
    }
    if (fewer && fewer_.frames++ == 0) fewer_.first = *fewer;
    if (more && more_.frames++ == 0) more_.first = *more;
    if (missing == 0) return;
    Lack& lack = missing_[missing];
    if (lack.frames++ == 0) lack.first = events.back().at.data();
}

void AmcTally::AddEvent(const AmcEvent& event) {
    const auto again = [&](std::string_view code, Severity severity) {
        return findings_.AddAgain(code, severity);
    };
    const std::string bone = event.bone == kNoBone ? "" : NameOf(event);
    switch (event.kind) {
        case AmcEvent::RowOrder:
            if (!again(codes::kRowOrder, Severity::Note))
                AddFinding(
                    codes::kRowOrder, Severity::Note, event,
                    "the frame lists its bones in another order than the first frame; they are "
                    "put in order");
            break;
        case AmcEvent::UnknownBone:
            AddUnknown(event);
            break;
        case AmcEvent::NoDof:
            if (!again(codes::kBoneWithoutDof, Severity::Note))
                AddFinding(codes::kBoneWithoutDof, Severity::Note, event,
                           "\"" + bone +
                               "\" has values without a degree of freedom; they are zeros and "
                               "are left out");
            break;
        case AmcEvent::NoDofLost:
            if (!again(codes::kBoneWithoutDof, Severity::Warning))
                AddFinding(
                    codes::kBoneWithoutDof, Severity::Warning, event,
                    "\"" + bone + "\" has values without a degree of freedom; they are left out");
            break;
        case AmcEvent::Glued:
            if (!again(codes::kNumberGlued, Severity::Warning))
                AddFinding(
                    codes::kNumberGlued, Severity::Warning, event,
                    "two numbers of \"" + bone + "\" are written as one word; they are parted");
            break;
        case AmcEvent::Comma:
            if (!again(codes::kNumberComma, Severity::Warning))
                AddFinding(codes::kNumberComma, Severity::Warning, event,
                           "a number of \"" + bone + "\" has a comma, which is read as its point");
            break;
        case AmcEvent::CommaWrong:
            if (!again(codes::kNumberComma, Severity::Error))
                AddFinding(codes::kNumberComma, Severity::Error, event,
                           "the commas in the row of \"" + bone +
                               "\" are neither its points nor between its numbers",
                           false);
            break;
        case AmcEvent::NotFinite:
            if (notFinite_++ == 0) firstNotFinite_ = event;
            break;
        case AmcEvent::Translation:
            if (!again(codes::kDofTranslation, Severity::Warning))
                AddFinding(
                    codes::kDofTranslation, Severity::Warning, event,
                    "\"" + bone + "\" is moved by " + Quoted(event.at) +
                        ", but a bone begins where its parent ends; its translations are left out",
                    skeleton_.bones[event.bone].leftOut != 0);
            break;
        default:
            break;
    }
}

// Counts the rows of each unknown name. When kNamesKept names are known, the rows of further names
// are only counted in the total.
void AmcTally::AddUnknown(const AmcEvent& event) {
    if (unknownRows_++ == 0) firstUnknown_ = event;
    const std::string name = ToLowerText(event.at);
    auto known = unknownIndex_.find(name);
    if (known == unknownIndex_.end()) {
        if (unknown_.size() == kNamesKept) return;
        known = unknownIndex_.emplace(name, unknown_.size()).first;
        unknown_.push_back({std::string(event.at), 0});
    }
    ++unknown_[known->second].rows;
}

void AmcTally::Report(const AmcValues& values, std::size_t frames,
                      const std::function<std::uint32_t(const char*)>& findMissing) {
    ReportTally(codes::kValuesFewer, fewer_, frames, "fewer");
    ReportTally(codes::kValuesMore, more_, frames, "more");
    ReportMissing(values, frames, findMissing);
    ReportAbsent(values);
    // Commas cannot be decimal points in one row and separators in another.
    if (values.CommasBetween() && findings_.Find(codes::kNumberComma))
        findings_.Add({codes::kNumberComma, Severity::Error, values.CommasBetween(),
                       "commas part the numbers of this row and are points in others"});
    ReportUnknown();
    ReportNotFinite(frames * values.Channels());
}

void AmcTally::ReportTally(std::string_view code, const Tally& tally, std::size_t frames,
                           const std::string& what) {
    if (tally.frames == 0) return;
    const bool few = AreFew(tally.frames, frames);
    const std::size_t dofs = skeleton_.bones[tally.first.bone].dof.size();
    AddFinding(code, few ? Severity::Warning : Severity::Error, tally.first,
               "the row of \"" + NameOf(tally.first) + "\" has " + what + " values than the " +
                   std::to_string(dofs) + " of its dof; " +
                   (few ? "the bone is held from the frame before"
                        : "so it is in " + Frames(tally.frames) + " of " + std::to_string(frames) +
                              ", too many to mend; --as-is reads on regardless"),
               few);
    findings_.AddAgain(code, Severity::Note, tally.frames - 1);
}

void AmcTally::ReportMissing(const AmcValues& values, std::size_t frames,
                             const std::function<std::uint32_t(const char*)>& findMissing) {
    const auto& order = values.Order();
    const auto absent = static_cast<std::size_t>(std::count_if(
        order.begin(), order.end(), [&](std::uint32_t bone) { return !values.WasSeen(bone); }));
    std::size_t count = 0;
    const char* first = nullptr;
    for (const auto& [bones, lack] : missing_) {
        if (bones <= absent) continue;
        count += lack.frames;
        if (!first || lack.first < first) first = lack.first;
    }
    if (count == 0) return;
    const AmcEvent event = {AmcEvent::Missing, findMissing(first), {first, 1}, 1};
    const bool few = AreFew(count, frames);
    AddFinding(codes::kBoneMissing, few ? Severity::Warning : Severity::Error, event,
               "the frame has no row of \"" + NameOf(event) + "\"; " +
                   (few ? "it is held from the frame before"
                        : Frames(count) + " of " + std::to_string(frames) +
                              " lack a bone, too many to mend; --as-is reads on regardless"),
               few);
    findings_.AddAgain(codes::kBoneMissing, Severity::Note, count - 1);
}

void AmcTally::ReportAbsent(const AmcValues& values) {
    for (const std::uint32_t bone : values.Order()) {
        if (values.WasSeen(bone) || findings_.AddAgain(codes::kBoneMissing, Severity::Warning))
            continue;
        findings_.Add({codes::kBoneMissing, Severity::Warning, nullptr,
                       "the bone \"" + skeleton_.bones[bone].name +
                           "\" has no row in any frame; it stays at rest",
                       skeleton_.bones[bone].name, true});
    }
}

void AmcTally::ReportUnknown() {
    if (unknownRows_ == 0) return;
    std::string names;
    for (std::size_t i = 0; i < std::min(unknown_.size(), kNamesListed); ++i)
        names += (i > 0 ? ", " : "") + Quoted(unknown_[i].name) + " (" +
                 std::to_string(unknown_[i].rows) + (unknown_[i].rows == 1 ? " row)" : " rows)");
    if (unknown_.size() > kNamesListed)
        names += " and " + std::to_string(unknown_.size() - kNamesListed) +
                 (unknown_.size() == kNamesKept ? " or more" : " more");
    findings_.Add({codes::kBoneUnknown, Severity::Warning, firstUnknown_.at.data(),
                   "the skeleton has no bone " + names + "; left out",
                   NameAsUtf8(firstUnknown_.at, findings_), true});
    findings_.AddAgain(codes::kBoneUnknown, Severity::Note, unknownRows_ - 1);
}

void AmcTally::ReportNotFinite(std::size_t all) {
    if (notFinite_ == 0) return;
    const bool few = notFinite_ * kNotFiniteShare <= all;
    AddFinding(codes::kNumberNotFinite, few ? Severity::Warning : Severity::Error, firstNotFinite_,
               Quoted(firstNotFinite_.at) + " of \"" + NameOf(firstNotFinite_) +
                   "\" is no finite number; " +
                   (few ? "the channel holds its last one"
                        : std::to_string(notFinite_) + " of " + std::to_string(all) +
                              " values are none, too many to mend"),
               few);
    findings_.AddAgain(codes::kNumberNotFinite, Severity::Note, notFinite_ - 1);
}

}  // namespace survey
