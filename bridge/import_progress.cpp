#include "bridge/import_progress.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string_view>

#include "headless/text.h"

namespace bridge {
namespace {

// What a phase is divided into. In a BVH import, the bar gets a new value after each such part. In
// an Acclaim import, the plug-in asks before each part whether the user cancels.
enum class Parts : std::uint8_t {
    None,       // the phase takes hardly any time
    Rows,       // the rows of a BVH file, in kRowParts parts
    AmcValues,  // the values of an AMC file
    Nodes,      // the nodes of the skeleton
};

// The number of times that the bar advances by one step while the rows of a BVH file are read.
constexpr std::uint64_t kRowParts = 50;
constexpr double kBarMaximum = 32000.0;

}  // namespace

struct ImportProgress::Phase {
    std::wstring_view caption;
    double end;  // the share at the end of the phase; the next phase begins with it
    Parts parts;
};

namespace {

// The shares were measured with motions of 100,000 frames.
using Phase = ImportProgress::Phase;

constexpr Phase kBvhNulls[] = {
    {L"Importing Motion...", 0.58, Parts::Rows},
    {L"Converting rotations order...", 0.80, Parts::Nodes},
    {L"Creating Zelk model...", 0.80, Parts::None},
    {L"Attaching FCurves...", 1.0, Parts::Nodes},
    {L"Almost done...", 1.0, Parts::None},
};
constexpr Phase kBvhBones[] = {
    {L"Importing Motion...", 0.44, Parts::Rows},
    {L"Converting rotations order...", 0.62, Parts::Nodes},
    {L"Creating Zelk model...", 0.62, Parts::None},
    {L"Mapping rotations to bones...", 0.83, Parts::Nodes},
    {L"Attaching FCurves...", 1.0, Parts::Nodes},
    {L"Almost done...", 1.0, Parts::None},
};
constexpr Phase kAcclaimNulls[] = {
    {L"Importing Acclaim Skeleton...", 0.0, Parts::None},
    {L"Creating Zelk model...", 0.0, Parts::None},
    {L"Importing Acclaim Motion...", 0.60, Parts::AmcValues},
    {L"Converting rotations order...", 0.60, Parts::None},
    {L"Converting rotations...", 0.90, Parts::Nodes},
    {L"Converting length animation...", 0.90, Parts::None},
    {L"Creating model motion action...", 1.0, Parts::Nodes},
    {L"Almost done...", 1.0, Parts::None},
};
constexpr Phase kAcclaimBones[] = {
    {L"Importing Acclaim Skeleton...", 0.0, Parts::None},
    {L"Creating Zelk model...", 0.0, Parts::None},
    {L"Importing Acclaim Motion...", 0.45, Parts::AmcValues},
    {L"Converting rotations order...", 0.45, Parts::None},
    {L"Converting rotations...", 0.69, Parts::Nodes},
    {L"Mapping rotations to bones...", 0.92, Parts::Nodes},
    {L"Creating model motion action...", 1.0, Parts::Nodes},
    {L"Almost done...", 1.0, Parts::None},
};

std::span<const Phase> PhasesOf(const ImportKind& kind) {
    if (kind.format == take::Format::Acclaim)
        return kind.useNulls ? std::span<const Phase>(kAcclaimNulls) : kAcclaimBones;
    return kind.useNulls ? std::span<const Phase>(kBvhNulls) : kBvhBones;
}

}  // namespace

ImportProgress::ImportProgress(const ImportKind& kind) : kind_(kind), phases_(PhasesOf(kind)) {
    NotePolls();
}

void ImportProgress::Receive(const headless::BarEvent& event) {
    using Kind = headless::BarEvent::Kind;
    switch (event.kind) {
        case Kind::Minimum:
        case Kind::Maximum:
        case Kind::Step:
            break;
        case Kind::Value:
            ++values_;
            if (phase_ != nullptr) CountNodes(event.number);
            break;
        case Kind::Caption:
            caption_ = headless::View(event.caption);
            BeginPhase(caption_);
            break;
        case Kind::Visible:
            isVisible_ = event.number != 0;
            break;
    }
}

void ImportProgress::BeginPhase(const std::wstring& caption) {
    const auto found = std::find_if(phases_.begin(), phases_.end(),
                                    [&](const Phase& phase) { return phase.caption == caption; });
    if (found == phases_.end()) return;
    phase_ = &*found;
    start_ = found == phases_.begin() ? 0.0 : std::prev(found)->end;
    polls_ = values_ = 0;
    NotePolls();
}

// `value` is the value that the bar gets. Its range in a BVH import is 100 steps, and 10 for each
// node and each phase with nodes. Rows advance it by one step each. Before the plug-in reads the
// first value of an AMC file, it asks once for each node whether the user cancels.
void ImportProgress::CountNodes(std::int32_t value) {
    if (phase_->parts == Parts::AmcValues && values_ == 1) {
        nodes_ = polls_;
        polls_ = 0;
        NotePolls();
    }
    if (phase_->parts != Parts::Rows || value <= 0) return;
    const double phasesWithNodes = kind_.useNulls ? 2.0 : 3.0;
    const double range = kBarMaximum * static_cast<double>(values_) / value;
    nodes_ =
        static_cast<std::uint64_t>(std::max((range - 100.0) / (10.0 * phasesWithNodes) + 0.5, 1.0));
}

std::uint64_t ImportProgress::ExpectedSteps() const {
    switch (phase_->parts) {
        case Parts::None:
            break;
        case Parts::Rows:
            return kRowParts;
        case Parts::AmcValues:
            return nodes_ > 0 ? kind_.amcValues : 0;
        case Parts::Nodes:
            return nodes_;
    }
    return 0;
}

// Decides how many polls are needed before Share() rises noticeably.
void ImportProgress::NotePolls() {
    constexpr std::uint64_t kDrawings = 1000;
    noticeablePolls_ = kind_.format == take::Format::Acclaim && phase_ != nullptr
                           ? polls_ + 1 + ExpectedSteps() / kDrawings
                           : std::numeric_limits<std::uint64_t>::max();
}

double ImportProgress::Share() const {
    if (phase_ == nullptr) return 0.0;
    const std::uint64_t expected = ExpectedSteps();
    if (expected == 0) return start_;
    const std::uint64_t steps = kind_.format == take::Format::Acclaim ? polls_ : values_;
    const double done = static_cast<double>(steps) / static_cast<double>(expected);
    return start_ + (phase_->end - start_) * std::min(done, 1.0);
}

}  // namespace bridge
