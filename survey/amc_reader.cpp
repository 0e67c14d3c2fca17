#include "survey/amc_reader.h"

#include <algorithm>
#include <cmath>

#include "survey/amc_matches.h"
#include "survey/amc_rate.h"
#include "survey/amc_scan.h"
#include "survey/amc_tally.h"
#include "survey/codes.h"
#include "survey/encoding.h"
#include "survey/source_findings.h"
#include "text/utf8.h"

namespace survey {
namespace {

// A motion is refused if more than one bone in kMissingShare has no row in the first frame. Only
// bones that should have a row are counted.
constexpr std::size_t kMissingShare = 5;

bool IsPlainNumber(const AmcFrame& frame) {
    const char* const last =
        std::find_if(frame.at, frame.end, [](char c) { return c < '0' || c > '9'; });
    return frame.hasNumber && last > frame.at && (last == frame.end || IsWhite(*last));
}

class Reader {
  public:
    Reader(const AmcHeader& header, const AmcSetting& setting, FindingList& findings)
        : text_(findings.Source().Text()),
          setting_(setting),
          findings_(findings),
          motion_(setting.skeleton, header.has3Dof),
          bones_(setting.skeleton),
          frameReader_(text_, bones_),
          scan_(text_),
          matches_(scan_, text_, MatchThreads(text_.size())),
          tally_(setting.skeleton, findings),
          lengthOf_(setting.skeleton.bones.size(), kNoBone),
          canSkipValues_(!setting.onFrame) {
        motion_.header = header;
        for (std::uint32_t bone = 0; bone < setting.skeleton.bones.size(); ++bone) {
            const AsfBone& listed = setting.skeleton.bones[bone];
            if (listed.Has(Dof::Length)) {
                lengthOf_[bone] = static_cast<std::uint32_t>(motion_.lengths.size());
                motion_.lengths.push_back({bone, {}, false, false});
            }
            for (const Dof dof : listed.dof)
                if (bone != 0 && !IsRotation(dof)) canSkipValues_ = false;
        }
    }

    AmcMotion Read() {
        motion_.end = text_.data() + text_.size();
        motion_.changed = findings_.Source().HadTrailingControls();
        const char* at = motion_.header.frames;
        while (at < text_.data() + text_.size() && !isRefused_)
            at = ReadOne(at);
        motion_.frames = motion_.numbers.Count();
        findings_.AddAgain(codes::kTextEncoding, Severity::Note, oddNames_);
        if (!isRefused_)
            tally_.Report(motion_.values, motion_.frames,
                          [this](const char* frame) { return FindMissing(frame); });
        if (motion_.frames == 0)
            findings_.Add({codes::kMotionEmpty, Severity::Note, nullptr,
                           "there are no frames; the skeleton is imported alone"});
        DecideRate(setting_.options, setting_.isArchive, setting_.skeleton.degrees, findings_,
                   motion_);
        motion_.numbers.Report(motion_.framesPerSecond, findings_);
        ReportUnit();
        motion_.values.Rewind();
        return std::move(motion_);
    }

  private:
    const char* ReadOne(const char* at) {
        std::uint32_t number = 0;
        if (canSkipValues_ && scan_.HasLearned() && motion_.values.IsComplete()) {
            if (const char* const end = matches_.MatchFrame(at, number)) {
                motion_.numbers.Add(number, at);
                oddNames_ += oddNamesOfLearned_;
                return end;
            }
        }
        frameReader_.Read(at, frame_);
        const bool isFirst = motion_.numbers.Count() == 0;
        motion_.numbers.Add(frame_.hasNumber ? std::optional(frame_.number) : std::nullopt, at);
        const bool isLast = frame_.end == text_.data() + text_.size();
        if (!isFirst && isLast && RemoveIfCut()) return frame_.end;
        motion_.values.Apply(frame_, events_);
        if (isFirst && ReportMismatch()) return frame_.end;
        Note();
        if (!scan_.HasLearned() && IsClean()) {
            scan_.Learn(frame_);
            oddNamesOfLearned_ = OddNames();
        }
        if (!IsClean()) motion_.changed = true;
        return frame_.end;
    }

    // Whether the plug-in reads `frame_` as it is meant. Translations of bones are allowed, because
    // the plug-in ignores them.
    bool IsClean() const {
        return !frame_.isOdd && IsPlainNumber(frame_) &&
               std::all_of(events_.begin(), events_.end(), [](const AmcEvent& event) {
                   return event.kind == AmcEvent::Translation;
               });
    }

    void Note() {
        tally_.Add(events_);
        for (const std::string_view word : frame_.keywords)
            if (!findings_.AddAgain(codes::kKeywordUnknown, Severity::Note))
                findings_.Add({codes::kKeywordUnknown, Severity::Note, word.data(),
                               "\"" + std::string(word) + "\" is passed over", "", true});
        for (const AmcRow& row : frame_.rows) {
            if (!findings_.Source().HasHighBytes() || text::IsValidUtf8(row.name)) continue;
            NameAsUtf8(row.name, findings_);
            motion_.changed = true;
        }
        for (const AmcRow& row : frame_.rows)
            if (row.bone != kNoBone && lengthOf_[row.bone] != kNoBone)
                NoteLength(motion_.lengths[lengthOf_[row.bone]]);
        // The callback looks at all bones. If many frames had few rows, it would take too long.
        if (setting_.onFrame && 2 * frame_.rows.size() >= motion_.values.Order().size())
            setting_.onFrame(motion_.values);
    }

    // The number of rows of `frame_` whose names are not UTF-8.
    std::size_t OddNames() const {
        if (!findings_.Source().HasHighBytes()) return 0;
        return static_cast<std::size_t>(
            std::count_if(frame_.rows.begin(), frame_.rows.end(),
                          [](const AmcRow& row) { return !text::IsValidUtf8(row.name); }));
    }

    void NoteLength(AmcLength& length) {
        if (!motion_.values.WasSeen(length.bone)) return;
        const std::vector<Dof>& dofs = setting_.skeleton.bones[length.bone].dof;
        const auto dof = std::find(dofs.begin(), dofs.end(), Dof::Length) - dofs.begin();
        const AsfNumber& value = motion_.values.Of(length.bone)[static_cast<std::size_t>(dof)];
        if (!length.isKnown) length.first = value;
        length.isKnown = true;
        if (value.value != length.first.value) length.moves = true;
    }

    // Whether `frame_`, the last frame, is incomplete because a bone that had values before lacks
    // some. If so, reports that and leaves the frame out.
    bool RemoveIfCut() {
        std::vector<std::uint8_t> isWhole(setting_.skeleton.bones.size());
        for (const AmcRow& row : frame_.rows)
            if (row.bone != kNoBone && !LacksValues(row)) isWhole[row.bone] = 1;
        for (const std::uint32_t bone : motion_.values.Order()) {
            if (isWhole[bone] != 0 || !motion_.values.WasSeen(bone)) continue;
            findings_.Add({codes::kFrameCut, Severity::Warning, frame_.at,
                           "the last frame lacks values of \"" +
                               setting_.skeleton.bones[bone].name + "\"; it is left out",
                           setting_.skeleton.bones[bone].name, true});
            motion_.numbers.RemoveLast();
            motion_.end = frame_.at;
            motion_.changed = true;
            return true;
        }
        return false;
    }

    // Whether the row has too few values, even if its words are split at every sign and comma.
    bool LacksValues(const AmcRow& row) const {
        std::size_t signs = 0;
        for (std::size_t word = row.first; word < row.first + row.count; ++word)
            signs += static_cast<std::size_t>(
                std::count_if(frame_.words[word].begin(), frame_.words[word].end(),
                              [](char c) { return c == '-' || c == '+' || c == ','; }));
        const std::size_t expected = setting_.skeleton.bones[row.bone].dof.size();
        return row.count < expected && row.count + signs < expected;
    }

    // Finds the first bone that has a row in the motion, but none in the frame that begins at
    // `frame`. Returns kNoBone if there is none.
    std::uint32_t FindMissing(const char* frame) {
        frameReader_.Read(frame, frame_);
        std::vector<std::uint8_t> hasRow(setting_.skeleton.bones.size());
        for (const AmcRow& row : frame_.rows)
            if (row.bone != kNoBone) hasRow[row.bone] = 1;
        const auto& order = motion_.values.Order();
        const auto found = std::find_if(order.begin(), order.end(), [&](std::uint32_t bone) {
            return hasRow[bone] == 0 && motion_.values.WasSeen(bone);
        });
        return found == order.end() ? kNoBone : *found;
    }

    bool ReportMismatch() {
        const std::size_t bones = motion_.values.Order().size();
        const bool isAny = !events_.empty() && events_.back().kind == AmcEvent::Missing;
        const std::size_t missing = isAny ? events_.back().count : 0;
        if (missing * kMissingShare <= bones) return false;
        findings_.Add({codes::kPairMismatch, Severity::Error, frame_.at,
                       std::to_string(missing) + " of the skeleton's " + std::to_string(bones) +
                           " moving bones have no row in the first frame; the motion is likely of "
                           "another skeleton"});
        isRefused_ = true;
        return true;
    }

    void ReportUnit() {
        const AmcHeader& header = motion_.header;
        if (!header.degrees || *header.degrees == setting_.skeleton.degrees) return;
        findings_.Add({codes::kAngleUnits, Severity::Note, header.unitAt,
                       std::string("the motion's angles are ") +
                           (*header.degrees ? "degrees and the skeleton's radians"
                                            : "radians and the skeleton's degrees") +
                           "; each is read in its own unit",
                       "", true});
    }

    std::string_view text_;
    const AmcSetting& setting_;
    FindingList& findings_;
    AmcMotion motion_;
    AmcBones bones_;
    AmcFrameReader frameReader_;
    AmcFrame frame_;
    std::vector<AmcEvent> events_;
    AmcScan scan_;
    AmcMatches matches_;
    AmcTally tally_;
    std::vector<std::uint32_t> lengthOf_;  // by bone: its index in `motion_.lengths`, or kNoBone
    // Whether a frame that matches the pattern of `scan_` may be passed over without reading its
    // values.
    bool canSkipValues_;
    std::size_t oddNamesOfLearned_ = 0;  // OddNames of the frame that is the pattern of `scan_`
    std::size_t oddNames_ = 0;           // sum of OddNames of all frames that were passed over
    bool isRefused_ = false;
};

}  // namespace

AmcMotion ReadAmc(const AmcHeader& header, const AmcSetting& setting, FindingList& findings) {
    return Reader(header, setting, findings).Read();
}

AsfSkeleton SkeletonOfMotion(std::string_view text, const AmcHeader& header) {
    AsfSkeleton skeleton;
    skeleton.degrees = header.degrees.value_or(true);
    skeleton.order.push_back(0);
    if (header.frames == text.data() + text.size()) return skeleton;
    AmcFrame frame;
    const AmcBones none(skeleton);
    AmcFrameReader(text, none).Read(header.frames, frame);
    for (const AmcRow& row : frame.rows) {
        const std::string name =
            text::IsValidUtf8(row.name) ? std::string(row.name) : Windows1252ToUtf8(row.name);
        const auto index = static_cast<std::uint32_t>(skeleton.bones.size());
        if (row.count == 0 || !skeleton.names.Add(name, index)) continue;
        AsfBone& bone = skeleton.bones.emplace_back();
        bone.name = name;
        bone.dof.assign(row.count, Dof::RotX);
        skeleton.order.push_back(index);
    }
    return skeleton;
}

}  // namespace survey
