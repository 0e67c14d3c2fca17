// Surveys a BVH file: reads it, reports what is odd about it, and writes the mended text.
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "survey/bvh_header_reader.h"
#include "survey/bvh_hierarchy_reader.h"
#include "survey/bvh_indentation.h"
#include "survey/bvh_mended_text.h"
#include "survey/bvh_plain_reading.h"
#include "survey/bvh_plain_rows.h"
#include "survey/bvh_plan.h"
#include "survey/bvh_rows.h"
#include "survey/bvh_walk.h"
#include "survey/bvh_words.h"
#include "survey/codes.h"
#include "survey/high_bytes.h"
#include "survey/quoted_word.h"
#include "survey/row_scan_parts.h"
#include "survey/source_findings.h"
#include "survey/survey.h"
#include "survey/text_kind.h"
#include "text/utf8.h"
#include "threads/thread_count.h"

namespace survey {
namespace {

constexpr double kUsualRate = 30.0;
// The most frames whose poses are computed to find the figure's shape.
constexpr std::size_t kMostPoses = 500;

Outline OutlineOf(const BvhSection& section) {
    Outline outline;
    for (const BvhJoint& joint : section.joints) {
        std::string name = joint.name;
        if (joint.isEndSite)
            name = joint.parent == kNoParent ? std::string("End_Site")
                                             : outline[joint.parent].name + "_End";
        outline.push_back({std::move(name), joint.parent, joint.isEndSite});
    }
    return outline;
}

class BvhSurveyor {
  public:
    BvhSurveyor(std::string_view bvh, const Options& options)
        : options_(options),
          reading_(std::make_shared<BvhReading>(bvh, options.encoding)),
          findings_(reading_->source) {
        bones_ = options.bones && options.purpose == Purpose::Import;
    }

    BvhSurvey Survey() {
        if (ReportSource(findings_) && ReadSections()) {
            ReportEncoding();
            FillFacts();
            for (const BvhPart& part : reading_->parts)
                result_.outlines.push_back(OutlineOf(part.section));
            if (options_.purpose == Purpose::Check) ExamineShape();
            if (IsWritten()) Mend();
        }
        if (options_.purpose == Purpose::Import) result_.framesPerSecond = options_.framesPerSecond;
        Finish();
        return std::move(result_);
    }

  private:
    std::string_view Text() const { return reading_->source.Text(); }

    bool ReadSections() {
        if (!HasHierarchy()) {
            findings_.Add({codes::kNotBvh, Severity::Error, Text().data(),
                           "this is no BVH file, which begins with HIERARCHY; it looks like " +
                               std::string(DescribeText(Text())) + "; name another file"});
            return false;
        }
        BvhWords words(Text(), findings_);
        const BvhWord& first = words.Peek();
        if (!EqualsWord(first.text, "HIERARCHY")) {
            findings_.Add({codes::kHierarchyWord, Severity::Error, first.text.data(),
                           Quoted(first.text) +
                               " is no word of a BVH; HIERARCHY was expected; remove what is "
                               "before it"});
            return false;
        }
        while (EqualsWord(words.Peek().text, "HIERARCHY"))
            if (!ReadSection(words)) return false;
        return true;
    }

    // Whether a line begins with HIERARCHY.
    bool HasHierarchy() const {
        const std::string_view text = Text();
        for (std::size_t line = 0; line < text.size();) {
            const std::size_t first =
                text.find_first_not_of(std::string_view(" \t\r\n\v\f\0", 7), line);
            if (first == std::string_view::npos) return false;
            if (BeginsWithWord(text.substr(first), "HIERARCHY")) return true;
            line = text.find_first_of("\r\n", first);
        }
        return false;
    }

    bool ReadSection(BvhWords& words) {
        reading_->parts.emplace_back();
        BvhPart& part = reading_->parts.back();
        BvhSection& section = part.section;
        section.at = words.Next().Spot();
        if (!BvhHierarchyReader(words, findings_).Read(section)) return false;
        CloseOpenBraces(section, findings_);
        ReportDuplicates(section);
        const bool hasMotion = section.motion.present;
        if (hasMotion)
            ReadMotionHeader(words, section, options_.framesPerSecond.has_value(), findings_);
        else if (!findings_.AddAgain(codes::kMotionMissing, Severity::Note))
            findings_.Add({codes::kMotionMissing, Severity::Note, section.at.at,
                           "the hierarchy has no motion; the skeleton is imported"});
        const bool isPlain = IsReadPlainly(section, Text());
        isAltered_ |= !isPlain || reading_->source.HadTrailingControls();
        if (!isPlain) ReportBracesAfterNumbers(section);
        part.plan.joints.resize(section.joints.size());
        part.plan.listsXyz = options_.purpose == Purpose::Import;
        isAltered_ |= PlanRotations(section, bones_, part.plan, findings_);
        return ReadMotion(part, words);
    }

    void ReportBracesAfterNumbers(const BvhSection& section) {
        if (section.bracesAfterNumbers == 0) return;
        if (!findings_.AddAgain(codes::kBraceGlued, Severity::Note, section.bracesAfterNumbers)) {
            findings_.Add({codes::kBraceGlued, Severity::Note, section.firstBraceAfterNumber.at,
                           "a brace touches another word or brace; they are parted", "", true});
            findings_.AddAgain(codes::kBraceGlued, Severity::Note, section.bracesAfterNumbers - 1);
        }
    }

    void ReportDuplicates(const BvhSection& section) {
        std::unordered_map<std::string_view, std::uint32_t> lines;
        for (const BvhJoint& joint : section.joints) {
            if (joint.isEndSite) continue;
            const auto [known, isNew] = lines.emplace(joint.name, joint.keyword.line);
            if (isNew || findings_.AddAgain(codes::kNameDuplicate, Severity::Note)) continue;
            findings_.Add({codes::kNameDuplicate, Severity::Note, joint.keyword.at,
                           "the name " + joint.name + " is given twice, in lines " +
                               std::to_string(known->second) + " and " +
                               std::to_string(joint.keyword.line) +
                               "; the scene gives the later joint another one",
                           joint.name});
        }
    }

    // Scans the rows of the section. Reads them only if the plan needs their values, if the scan
    // found something odd, or if another section follows. Otherwise, a mended text reads them when
    // it is written.
    bool ReadMotion(BvhPart& part, BvhWords& words) {
        BvhSection& section = part.section;
        BvhSpot end{words.End(), 0};
        bool isRead = true;
        if (section.motion.present) {
            const char* const rows = section.motion.rows.at;
            const auto bytes = static_cast<std::size_t>(words.End() - rows);
            const RowScan scan =
                ScanRowsInParts({rows, bytes}, section.channels, ScanThreads(bytes));
            const bool isLast = scan.end == words.End();
            if (scan.plain && isLast) plainRows_ = rows;
            if (scan.plain && isLast && !NeedsValues(part)) {
                CompareFrameCount(section, scan.rows, findings_);
                part.rowCount = scan.rows;
            } else {
                isRead = ReadPartRows(part, scan.plain && isLast ? scan.rows : 0);
                end = part.frames.end;
            }
            words.MoveTo(end);
        }
        if (!isRead) return false;
        isAltered_ |= PlanPositions(section, part.frames, bones_, part.plan, findings_);
        PlanEnds(section, part.frames, bones_, part.plan, findings_);
        return true;
    }

    // Whether the plan depends on the values of the section.
    bool NeedsValues(const BvhPart& part) const {
        if (options_.purpose == Purpose::Check) return true;
        const auto& joints = part.section.joints;
        return std::any_of(joints.begin(), joints.end(), [&](const BvhJoint& joint) {
            return (joint.parent != kNoParent && joint.HasPositions()) ||
                   (bones_ && !joint.isEndSite && !joint.hasJoints);
        });
    }

    // `plainRows` is the number of rows if the scan has found them plain; otherwise 0.
    bool ReadPartRows(BvhPart& part, std::size_t plainRows) {
        const bool isRead =
            ReadPlain(part, plainRows) || ReadRows(part.section, Text(), findings_, part.frames);
        part.hasFrames = true;
        part.rowCount = part.frames.Count();
        if (!isRead) return false;
        CompareFrameCount(part.section, part.rowCount, findings_);
        const auto& rows = part.frames.rows;
        isAltered_ |=
            part.frames.hasOddWhite ||
            std::any_of(rows.begin(), rows.end(), [](const BvhRow& row) { return !row.isPlain; });
        return true;
    }

    bool ReadPlain(BvhPart& part, std::size_t rows) const {
        const char* const end = Text().data() + Text().size();
        const std::size_t threads =
            threads::CountFor(static_cast<std::uint64_t>(end - part.section.motion.rows.at));
        if (ReadPlainRows(part.section, Text(), rows, threads, part.frames)) return true;
        part.frames = {};
        return false;
    }

    // Reports bytes that are not UTF-8, unless a name with such bytes was reported.
    void ReportEncoding() {
        if (findings_.Find(codes::kTextEncoding) || !HasHighBytes()) return;
        const std::size_t invalid = text::FindInvalidUtf8(Text());
        if (invalid == std::string_view::npos) return;
        findings_.Add({codes::kTextEncoding, Severity::Note, Text().data() + invalid,
                       "this is not UTF-8; it is in no name, and changes nothing"});
    }

    // Rows that the scan has found plain have no bytes above 127, and take long to search.
    bool HasHighBytes() const {
        if (plainRows_ == nullptr) return reading_->source.HasHighBytes();
        return HasHighByte({Text().data(), static_cast<std::size_t>(plainRows_ - Text().data())});
    }

    bool IsAltered() const { return isAltered_ || findings_.HasMended(); }

    // Whether a mended text is written. For Purpose::Fix, only a mended finding is a reason.
    bool IsWritten() const {
        if (options_.purpose == Purpose::Check) return false;
        return options_.purpose == Purpose::Fix ? findings_.HasMended() : IsAltered();
    }

    // The duration of a frame in seconds. The user's rate overrides that of the file, but not for
    // Purpose::Fix.
    double FrameTime(const BvhSection& section) const {
        if (options_.framesPerSecond && options_.purpose != Purpose::Fix)
            return 1.0 / *options_.framesPerSecond;
        const auto& stated = section.motion.frameTime;
        return stated && *stated > 0.0 ? *stated : 1.0 / kUsualRate;
    }

    void Mend() {
        for (BvhPart& part : reading_->parts)
            part.frameTime = FrameTime(part.section);
        result_.mended = MendBvh(reading_);
    }

    void FillFacts() {
        Facts& facts = result_.facts;
        for (const BvhPart& part : reading_->parts)
            for (const BvhJoint& joint : part.section.joints) {
                ++(joint.isEndSite ? facts.endSites : facts.joints);
                facts.channels += joint.channelCount;
                AddOrder(joint);
            }
        const BvhPart& first = reading_->parts.front();
        if (!first.section.motion.present) return;
        facts.frames = first.rowCount;
        const auto& stated = first.section.motion.frameTime;
        if (stated && *stated > 0.0) facts.statedRate = 1.0 / *stated;
        const double frameTime =
            options_.framesPerSecond ? 1.0 / *options_.framesPerSecond : FrameTime(first.section);
        facts.framesPerSecond =
            options_.framesPerSecond ? *options_.framesPerSecond : 1.0 / frameTime;
        facts.seconds = static_cast<double>(first.rowCount) * frameTime;
    }

    void AddOrder(const BvhJoint& joint) {
        std::string order;
        for (std::size_t i = 0; i < joint.channelCount; ++i)
            if (IsRotation(joint.channels[i])) order += "XYZ"[AxisOf(joint.channels[i])];
        auto& orders = result_.facts.orders;
        if (!order.empty() && std::find(orders.begin(), orders.end(), order) == orders.end())
            orders.push_back(order);
    }

    // Reports the figure's shape. It is computed from the first section. If the section has more
    // than kMostPoses frames, the poses of kMostPoses frames are used; these are spread evenly over
    // the section.
    void ExamineShape() {
        const BvhPart& part = reading_->parts.front();
        FigureShape shape;
        BvhWalk walk(part.section, part.plan.addsOffsets);
        shape.SetRest(walk.RestExtent());
        const std::size_t count = part.frames.Count();
        const std::size_t poses = std::min(count, kMostPoses);
        for (std::size_t i = 0; i < poses; ++i)
            shape.AddFrame(walk.FrameExtent(part.frames.Frame(i * count / poses)));
        ReportShape(shape, result_.facts, findings_);
    }

    // The number of the frame whose row is in this line. A section counts its frames from 1.
    std::optional<std::int64_t> FrameInLine(std::size_t line) const {
        for (const BvhPart& part : reading_->parts) {
            const std::vector<BvhRow>& rows = part.frames.rows;
            const auto row = std::lower_bound(
                rows.begin(), rows.end(), line,
                [](const BvhRow& each, std::size_t wanted) { return each.line < wanted; });
            if (row != rows.end() && row->line == line) return row - rows.begin() + 1;
        }
        return std::nullopt;
    }

    void Finish() {
        findings_.SetFrames([this](const char*, std::size_t line) { return FrameInLine(line); });
        result_.findings = findings_.Sorted();
        if (!findings_.HasErrors()) return;
        // A refused file has no mended text.
        for (Finding& finding : result_.findings)
            finding.mended = false;
    }

    const Options& options_;
    std::shared_ptr<BvhReading> reading_;
    FindingList findings_;
    bool bones_ = false;
    // Whether the plug-in would misread the file, or the plan changes it, for a reason that is not
    // reported.
    bool isAltered_ = false;
    // The start of rows that go to the end of the text, and that the scan has found plain; null if
    // there are none.
    const char* plainRows_ = nullptr;
    BvhSurvey result_;
};

}  // namespace

BvhSurvey SurveyBvh(std::string_view bvh, const Options& options) {
    return BvhSurveyor(bvh, options).Survey();
}

}  // namespace survey
