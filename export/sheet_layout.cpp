#include "export/sheet_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "export/figure_facts.h"

namespace exporters {
namespace {

using headless::Transform;

constexpr std::size_t kPoses = 8;
constexpr std::size_t kMostPathPoints = 160;
// A path that is at least this long, as a fraction of the figure's height, is shown from the side.
constexpr double kTravels = 0.5;
// Of poses that follow a path, none may be nearer to the one before than this fraction of the mean.
constexpr double kLeastStep = 0.2;
// Two figures side by side may overlap by about half of the widest one.
constexpr double kOverlap = 0.45;

// The position of a joint: along two axes on the ground, and up.
struct Position {
    double first = 0.0;
    double second = 0.0;
    double up = 0.0;
};
using Pose = std::vector<Position>;

// A direction on the ground.
struct Direction {
    double first = 1.0;
    double second = 0.0;
    double Of(const Position& position) const {
        return position.first * first + position.second * second;
    }
    double Across(const Position& position) const {
        return position.second * first - position.first * second;
    }
};

struct Range {
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();
    void Include(double value) {
        least = std::min(least, value);
        most = std::max(most, value);
    }
    double Size() const { return most >= least ? most - least : 0.0; }
};

Position PositionOf(const Transform& global, char up) {
    const double* const p = global.origin;
    if (up == 'z') return {p[0], p[1], p[2]};
    if (up == 'x') return {p[1], p[2], p[0]};
    return {p[2], p[0], p[1]};
}

// The direction in which the positions are spread most: the main axis of their covariance.
Direction MainDirection(const std::vector<Position>& positions) {
    double mean[2] = {0.0, 0.0};
    for (const Position& position : positions) {
        mean[0] += position.first / static_cast<double>(positions.size());
        mean[1] += position.second / static_cast<double>(positions.size());
    }
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;
    for (const Position& position : positions) {
        const double x = position.first - mean[0];
        const double y = position.second - mean[1];
        xx += x * x;
        xy += x * y;
        yy += y * y;
    }
    const double angle = 0.5 * std::atan2(2.0 * xy, xx - yy);
    return {std::cos(angle), std::sin(angle)};
}

class Arranger {
  public:
    Arranger(const Table& table, const Options& options)
        : table_(table), facts_(DescribeFigure(table.FirstModel(), options)) {
        // A figure at rest that spreads its arms is wider than it is tall.
        if (table.Times().IsPose() && facts_.up == 'x') facts_.up = UpOfRest();
    }

    SheetLayout Arrange(const Progress& progress) {
        Sample(progress);
        Measure();
        ChooseView();
        Place();
        layout_.height = facts_.height;
        layout_.metresPerUnit = facts_.metresPerUnit;
        return std::move(layout_);
    }

  private:
    // Returns the longer one of the y axis and the z axis of the rest pose.
    char UpOfRest() const {
        std::vector<Transform> locals(table_.Columns().size());
        std::vector<Transform> globals(table_.Columns().size());
        Table::Scratch scratch;
        table_.Row(0, locals, globals, scratch);
        Range y;
        Range z;
        for (const Transform& global : globals) {
            y.Include(global.origin[1]);
            z.Include(global.origin[2]);
        }
        return z.Size() > y.Size() ? 'z' : 'y';
    }

    std::size_t RowOf(std::size_t index, std::size_t count) const {
        return count < 2 ? 0 : index * (table_.Rows() - 1) / (count - 1);
    }

    void Sample(const Progress& progress) {
        std::vector<Transform> locals(table_.Columns().size());
        std::vector<Transform> globals(table_.Columns().size());
        Table::Scratch scratch;
        const auto poseAt = [&](std::size_t row) {
            table_.Row(row, locals, globals, scratch);
            Pose pose;
            for (const Transform& global : globals)
                pose.push_back(PositionOf(global, facts_.up));
            return pose;
        };
        const std::size_t poses = std::min(kPoses, table_.Rows());
        for (std::size_t pose = 0; pose < poses; ++pose)
            poses_.push_back(poseAt(RowOf(pose, poses)));
        const std::size_t points = std::min(kMostPathPoints, table_.Rows());
        for (std::size_t point = 0; point < points && !locals.empty(); ++point) {
            progress.Report(point, points);
            path_.push_back(poseAt(RowOf(point, points)).front());
        }
        for (std::size_t pose = 0; pose < poses && points > 0; ++pose)
            layout_.marks.push_back(poses < 2 ? 0 : pose * (points - 1) / (poses - 1));
    }

    void Measure() {
        Range up;
        for (const Pose& pose : poses_)
            for (const Position& position : pose)
                up.Include(position.up);
        floor_ = up.Size() > 0.0 ? up.least : 0.0;
        tall_ = up.Size();
    }

    void ChooseView() {
        if (path_.empty()) return;
        view_ = MainDirection(path_);
        Range travelled;
        for (const Position& position : path_)
            travelled.Include(view_.Of(position));
        if (travelled.Size() >= kTravels * tall_) {
            // The motion goes to the right.
            if (view_.Of(path_.back()) < view_.Of(path_.front()))
                view_ = {-view_.first, -view_.second};
            followsPath_ = IsRising();
        } else {
            view_ = MainDirection(poses_.front());
        }
    }

    // Whether each pose is clearly to the right of the one before.
    bool IsRising() const {
        const auto at = [&](std::size_t pose) { return view_.Of(poses_[pose].front()); };
        const std::size_t steps = poses_.size() - 1;
        const double mean =
            (at(steps) - at(0)) / static_cast<double>(std::max<std::size_t>(steps, 1));
        for (std::size_t pose = 1; pose < poses_.size(); ++pose)
            if (at(pose) - at(pose - 1) < kLeastStep * mean) return false;
        return steps > 0 && mean > 0.0;
    }

    // The extent of all poses to both sides of the first joint.
    Range Sides() const {
        Range sides;
        sides.Include(0.0);
        for (const Pose& pose : poses_)
            for (const Position& position : pose)
                sides.Include(view_.Of(position) - view_.Of(pose.front()));
        return sides;
    }

    void Place() {
        if (path_.empty()) return;
        const Range sides = Sides();
        const double widest = std::max(sides.Size(), 1e-12);
        const auto gaps = static_cast<double>(poses_.size() - 1);
        const double pixels = std::min(tall_ > 0.0 ? kSheetHeight / tall_ : kSheetWidth / widest,
                                       kSheetWidth / (widest * (1.0 + gaps * kOverlap)));
        for (const Pose& pose : poses_) {
            Range up;
            for (const Position& position : pose)
                up.Include(position.up);
            layout_.tallest = std::max(layout_.tallest, pixels * up.Size());
        }
        const double room = kSheetWidth - pixels * widest;
        const double start = view_.Of(poses_.front().front());
        const double whole = view_.Of(poses_.back().front()) - start;
        for (std::size_t index = 0; index < poses_.size(); ++index) {
            const Pose& pose = poses_[index];
            const double root = view_.Of(pose.front());
            double share = gaps > 0.0 ? static_cast<double>(index) / gaps : 0.5;
            if (followsPath_) share = (root - start) / whole;
            const double left = share * room - pixels * sides.least;
            std::vector<SheetPoint>& points = layout_.poses.emplace_back();
            for (const Position& position : pose)
                points.push_back({left + pixels * (view_.Of(position) - root),
                                  kSheetHeight - pixels * (position.up - floor_)});
        }
        for (const Position& position : path_)
            layout_.path.push_back({pixels * view_.Of(position), -pixels * view_.Across(position)});
    }

    const Table& table_;
    FigureFacts facts_;
    std::vector<Pose> poses_;
    std::vector<Position> path_;
    Direction view_;
    bool followsPath_ = false;
    double floor_ = 0.0;
    double tall_ = 0.0;
    SheetLayout layout_;
};

}  // namespace

SheetLayout ArrangeSheet(const Table& table, const Options& options, const Progress& progress) {
    return Arranger(table, options).Arrange(progress);
}

}  // namespace exporters
