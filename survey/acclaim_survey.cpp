// Surveys Acclaim skeletons with their motions.
#include <algorithm>
#include <memory>

#include "survey/acclaim_dofs.h"
#include "survey/acclaim_figure.h"
#include "survey/acclaim_lengths.h"
#include "survey/acclaim_rotations.h"
#include "survey/acclaim_words.h"
#include "survey/amc_rate.h"
#include "survey/amc_reader.h"
#include "survey/amc_writer.h"
#include "survey/asf_plain.h"
#include "survey/asf_reader.h"
#include "survey/asf_writer.h"
#include "survey/codes.h"
#include "survey/source_findings.h"
#include "survey/survey.h"
#include "text/utf8.h"

namespace survey {
namespace {

// The name of a file without its extension.
std::string StemOf(const std::string& name) {
    return name.substr(0, std::min(name.rfind('.'), name.size()));
}

// The digits that a file name begins with, such as "11" in "11_01.amc"; empty if there are none. In
// the archive of Preset::Cmu they are the number of the recorded person.
std::string SubjectOf(const std::string& name) {
    const auto isNoDigit = [](char c) { return c < '0' || c > '9'; };
    return {name.begin(), std::find_if(name.begin(), name.end(), isNoDigit)};
}

// Adds a note if the text is not UTF-8 and no finding says so yet. Names that are not UTF-8 have
// been reported before, so the bytes that this note is about are in no name.
void ReportOtherBytes(FindingList& findings) {
    const std::string_view text = findings.Source().Text();
    if (!findings.Source().HasHighBytes() || findings.Find(codes::kTextEncoding)) return;
    const std::size_t invalid = text::FindInvalidUtf8(text);
    if (invalid != std::string_view::npos)
        findings.Add({codes::kTextEncoding, Severity::Note, text.data() + invalid,
                      "the text is not UTF-8 here; no name is meant, so nothing is lost"});
}

// Whether a mended text is to be written. `isChanged` says that the plug-in would misread the file.
// This is a reason only for Purpose::Import.
bool NeedsText(const FindingList& findings, const AsfSkeleton& skeleton, bool isChanged,
               Purpose purpose) {
    const bool isTouched = std::any_of(skeleton.bones.begin(), skeleton.bones.end(),
                                       [](const AsfBone& bone) { return bone.IsRewritten(); });
    return purpose != Purpose::Check && !findings.HasErrors() &&
           (isTouched || findings.HasMended() || (isChanged && purpose == Purpose::Import));
}

// Returns the sorted findings, in which no error counts as mended. If the file is of another
// format, returns only the finding that says so.
std::vector<Finding> FinishedFindings(FindingList& findings) {
    for (const std::string_view code : {codes::kNotAsf, codes::kNotAmc})
        if (const Finding* refused = findings.Find(code)) return {*refused};
    std::vector<Finding> finished = findings.Sorted();
    for (Finding& finding : finished)
        if (finding.severity == Severity::Error) finding.mended = false;
    return finished;
}

// `factor` is the factor on lengths that the plug-in uses.
Outline OutlineOf(const AsfSkeleton& skeleton, double factor) {
    Outline outline;
    std::vector<std::uint32_t> indexOf(skeleton.bones.size(), OutlineJoint::kNoParent);
    for (const std::uint32_t bone : skeleton.order) {
        const std::uint32_t parent = skeleton.bones[bone].parent;
        indexOf[bone] = static_cast<std::uint32_t>(outline.size());
        outline.push_back({skeleton.bones[bone].name,
                           parent == kNoBone ? OutlineJoint::kNoParent : indexOf[parent], false});
    }
    // The plug-in adds an end to each bone that has no children and is not too short.
    for (const std::uint32_t bone : skeleton.order) {
        const AsfBone& leaf = skeleton.bones[bone];
        if (bone == 0 || !leaf.children.empty() || leaf.length.value * factor < kShortestBone)
            continue;
        outline.push_back({leaf.name + "_End", indexOf[bone], true});
    }
    return outline;
}

// Surveys one motion.
class MotionSurvey {
  public:
    MotionSurvey(const AcclaimFile& file, const Options& options)
        : options_(options), source_(file.text, options.encoding), findings_(source_) {
        if (ReportSource(findings_)) header_ = ReadAmcHeader(findings_);
    }

    FindingList& Findings() { return findings_; }
    AmcMotion* Motion() { return motion_ ? &*motion_ : nullptr; }

    void Read(const AsfSkeleton& skeleton, const LengthSettings& lengths) {
        if (findings_.HasErrors()) return;
        AcclaimFigure figure(skeleton, lengths.factor);
        LimitWatch limits(skeleton);
        const bool degrees = header_.degrees.value_or(skeleton.degrees);
        AmcSetting setting{skeleton, options_, lengths.isArchive, {}};
        if (options_.purpose == Purpose::Check)
            setting.onFrame = [&](const AmcValues& values) {
                limits.Add(values, degrees);
                if (poses_.IncludesNext()) poses_.Add(figure.FrameExtent(values, degrees));
            };
        motion_.emplace(ReadAmc(header_, setting, findings_));
        if (options_.purpose == Purpose::Check) limits.Report(findings_);
    }

    void ReadAlone() {
        if (findings_.HasErrors()) return;
        rowsSkeleton_ = SkeletonOfMotion(source_.Text(), header_);
        motion_.emplace(ReadAmc(
            header_, {rowsSkeleton_, options_, options_.preset == Preset::Cmu, {}}, findings_));
    }

    const PoseSample& Poses() const { return poses_; }

    AmcSurvey Finish(const AsfSkeleton* skeleton, bool isRefused) {
        ReportOtherBytes(findings_);
        AmcSurvey survey;
        if (motion_) {
            FillFacts(skeleton ? *skeleton : rowsSkeleton_, survey.facts);
            Write(skeleton ? *skeleton : rowsSkeleton_, isRefused, survey);
        }
        findings_.SetFrames([this](const char* at, std::size_t) { return FrameAt(at); });
        survey.findings = FinishedFindings(findings_);
        return survey;
    }

  private:
    static constexpr std::string_view kBlanks = " \t\r";

    // The number, as the file has it, of the frame that this position is in. A frame begins with a
    // line that has only the frame's number.
    std::optional<std::int64_t> FrameAt(const char* at) const {
        const char* const begin = source_.Text().data();
        if (!header_.frames || at < header_.frames) return std::nullopt;
        const char* lineEnd = std::find(at, begin + source_.Text().size(), '\n');
        while (lineEnd > header_.frames) {
            const char* line = lineEnd;
            while (line > header_.frames && line[-1] != '\n')
                --line;
            const std::string_view words(line, static_cast<std::size_t>(lineEnd - line));
            const std::size_t first = words.find_first_not_of(kBlanks);
            const std::size_t last = words.find_last_not_of(kBlanks);
            double number = 0.0;
            if (first <= last && last != std::string_view::npos &&
                IsFrameNumber(words.substr(first, last + 1 - first), number))
                return static_cast<std::int64_t>(number);
            lineEnd = line > header_.frames ? line - 1 : line;
        }
        return std::nullopt;
    }

    void FillFacts(const AsfSkeleton& skeleton, Facts& facts) const {
        for (const AsfBone& bone : skeleton.bones)
            facts.joints += bone.dof.empty() ? 0 : 1;
        facts.channels = motion_->values.Channels();
        facts.frames = motion_->frames;
        facts.framesPerSecond = motion_->framesPerSecond;
        if (!motion_->header.rateText.empty()) facts.statedRate = motion_->header.rate;
        facts.seconds = static_cast<double>(motion_->numbers.Span()) / motion_->framesPerSecond;
    }

    void Write(const AsfSkeleton& skeleton, bool isRefused, AmcSurvey& survey) {
        if (!isRefused && NeedsText(findings_, skeleton, motion_->changed, options_.purpose)) {
            survey.mended = WriteAmc(skeleton, options_.purpose, source_, *motion_);
            if (options_.purpose == Purpose::Import) motion_->plugInRate = WrittenPlugInRate();
        }
        const double plugInRate = motion_->plugInRate > 1 ? motion_->plugInRate : kPlugInRate;
        if (motion_->framesPerSecond != plugInRate)
            survey.framesPerSecond = motion_->framesPerSecond;
    }

    int WrittenPlugInRate() const {
        return motion_->header.rateText.empty() ? 0 : NearestRate(motion_->header.rate);
    }

    // The rate, in frames per second, that the plug-in uses for a motion that states none.
    static constexpr double kPlugInRate = 30.0;

    const Options& options_;
    SourceText source_;
    FindingList findings_;
    AmcHeader header_;
    AsfSkeleton rowsSkeleton_;  // built from the motion's rows if its skeleton is not known
    std::optional<AmcMotion> motion_;
    PoseSample poses_;
};

// Surveys a skeleton with its motions.
class PairSurvey {
  public:
    PairSurvey(const AcclaimFile& asf, std::span<const AcclaimFile> amcs, const Options& options)
        : asf_(asf), options_(options), source_(asf.text, options.encoding), findings_(source_) {
        for (const AcclaimFile& amc : amcs)
            motions_.push_back(std::make_unique<MotionSurvey>(amc, options));
        ReportNames(amcs);
    }

    AcclaimSurvey Run() {
        if (ReportSource(findings_)) ReadSkeleton();
        ReadMotions();
        AcclaimSurvey survey;
        survey.lengthMultiplier = lengths_.multiplier;
        survey.multiplied = lengths_.multiplied;
        if (IsUsable())
            survey.outline = OutlineOf(skeleton_, lengths_.factor * lengths_.multiplied);
        FillFacts(survey.skeleton.facts);
        survey.skeleton.facts.endSites = static_cast<std::size_t>(
            std::count_if(survey.outline.begin(), survey.outline.end(),
                          [](const OutlineJoint& joint) { return joint.isEndSite; }));
        const bool isRefused = findings_.HasErrors();
        for (const auto& motion : motions_) {
            survey.motions.push_back(motion->Finish(IsUsable() ? &skeleton_ : nullptr, isRefused));
            CopyShape(survey.skeleton.facts, survey.motions.back().facts);
        }
        ReportOtherBytes(findings_);
        const bool isChanged = skeleton_.changed || source_.HadTrailingControls();
        if (NeedsText(findings_, skeleton_, isChanged, options_.purpose))
            survey.skeleton.mended = WriteAsf(skeleton_, source_);
        survey.skeleton.findings = FinishedFindings(findings_);
        return survey;
    }

  private:
    bool IsUsable() const { return isRead_; }

    void ReadSkeleton() {
        skeleton_ = ReadAsf(findings_, StemOf(asf_.name));
        if (findings_.HasErrors()) return;
        isRead_ = true;
        skeleton_.changed = skeleton_.changed || !PlugInReads(source_.Text(), skeleton_);
        ListOrders();
        ReexpressAxes(skeleton_, findings_);
        MendDirections(skeleton_, findings_);
        PlanTranslations(skeleton_);
        if (options_.purpose == Purpose::Import && options_.bones)
            PlanLengthsOfChains(skeleton_, findings_);
        lengths_ = DecideLengths(skeleton_, options_, findings_);
    }

    void ReadMotions() {
        std::vector<AmcMotion*> read;
        bool reportedTranslations = false;
        for (const auto& motion : motions_) {
            if (!IsUsable()) {
                motion->ReadAlone();
                continue;
            }
            motion->Read(skeleton_, lengths_);
            if (motion->Motion()) read.push_back(motion->Motion());
            reportedTranslations |= motion->Findings().Find(codes::kDofTranslation) != nullptr;
        }
        if (!IsUsable()) return;
        std::optional<double> chainScale;
        if (options_.purpose == Purpose::Import && options_.bones)
            chainScale = lengths_.factor * lengths_.multiplied;
        FoldLengths(skeleton_, read, chainScale, findings_);
        DecideTranslations(reportedTranslations);
    }

    void DecideTranslations(bool areReported) {
        const bool areLeftOut = PlanTranslations(skeleton_);
        for (const auto& motion : motions_)
            if (Finding* known = motion->Findings().Find(codes::kDofTranslation))
                known->mended |= areLeftOut;
        if (options_.purpose == Purpose::Fix && !areReported) RestoreTranslations(skeleton_);
    }

    void ReportNames(std::span<const AcclaimFile> amcs) {
        const std::string subject = SubjectOf(asf_.name);
        for (std::size_t i = 0; i < amcs.size(); ++i) {
            const std::string other = SubjectOf(amcs[i].name);
            if (subject.empty() || other.empty() || subject == other) continue;
            motions_[i]->Findings().Add({codes::kPairMismatch, Severity::Note, nullptr,
                                         "the name \"" + amcs[i].name +
                                             "\" does not fit the skeleton's, \"" + asf_.name +
                                             "\""});
        }
    }

    // Collects the orders in which bones list their rotations, each once.
    void ListOrders() {
        for (const AsfBone& bone : skeleton_.bones) {
            std::string order;
            for (const Dof dof : bone.dof)
                if (IsRotation(dof)) order += "XYZ"[AxisOf(dof)];
            if (!order.empty() && std::find(orders_.begin(), orders_.end(), order) == orders_.end())
                orders_.push_back(order);
        }
    }

    void FillFacts(Facts& facts) {
        if (!IsUsable()) return;
        facts.joints = skeleton_.bones.size();
        for (const AsfBone& bone : skeleton_.bones)
            facts.channels += bone.dof.size();
        facts.orders = orders_;
        if (options_.purpose != Purpose::Check) return;
        FigureShape shape;
        shape.SetRest(AcclaimFigure(skeleton_, lengths_.factor).RestExtent());
        for (const auto& motion : motions_)
            motion->Poses().AddTo(shape);
        ReportShape(shape, facts, findings_);
    }

    static void CopyShape(const Facts& from, Facts& to) {
        to.height = from.height;
        to.unit = from.unit;
        to.up = from.up;
        to.orders = from.orders;
    }

    const AcclaimFile& asf_;
    const Options& options_;
    SourceText source_;
    FindingList findings_;
    AsfSkeleton skeleton_;
    std::vector<std::string> orders_;
    LengthSettings lengths_;
    std::vector<std::unique_ptr<MotionSurvey>> motions_;
    bool isRead_ = false;
};

}  // namespace

AcclaimSurvey SurveyAcclaim(const AcclaimFile& asf, std::span<const AcclaimFile> amcs,
                            const Options& options) {
    return PairSurvey(asf, amcs, options).Run();
}

AmcSurvey SurveyAmcAlone(const AcclaimFile& amc, const Options& options) {
    MotionSurvey survey(amc, options);
    survey.ReadAlone();
    return survey.Finish(nullptr, false);
}

}  // namespace survey
