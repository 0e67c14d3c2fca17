// Collects what tables of poses hold: the transforms of every joint in each frame.
// Internal to export/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "export/exported_motion.h"
#include "export/options.h"
#include "export/timeline.h"
#include "headless/scene.h"
#include "headless/transform.h"

namespace exporters {

// The columns are the joints of all models, model after model. The rows are the frames. The
// timeline with the most frames is used for all models. After the end of its motion a model keeps
// the pose of its last frame. A model without motion keeps its base pose. The table keeps
// references to the scene.
class Table {
  public:
    // `even` is passed to MakeTimeline. Throws what
    // ExportedMotion throws, and ExportError if the models differ in their rate.
    Table(const headless::Scene& scene, const Options& options, bool even);

    struct Column {
        // "joint" or, with several models, "model.joint". All names are different.
        std::wstring name;
        std::wstring sourceName;                // the joint's name in the file
        std::size_t parent = Joint::kNoParent;  // index of the parent's column; kNoParent if none
        bool isEndSite = false;
        headless::Transform rest;  // as seen from the parent in the base pose, scaled and turned
    };
    const std::vector<Column>& Columns() const { return columns_; }
    // The models, in the order of their columns. There is at least one.
    const std::vector<ExportedMotion>& Models() const { return motions_; }
    const ExportedMotion& FirstModel() const { return motions_.front(); }
    const Timeline& Times() const { return timeline_; }
    // At least 1: a table without motion has one row, the base pose.
    std::size_t Rows() const { return timeline_.IsPose() ? 1 : timeline_.frames.size(); }
    // The number of a row's frame, and the seconds from the first row to it. Both are 0 for the
    // base pose.
    std::int64_t FrameNumber(std::size_t row) const;
    double Seconds(std::size_t row) const;

    // Memory that a thread uses again for each row.
    struct Scratch {
        std::vector<ExportedMotion::Scratch> motions;
    };
    // Computes the local and the global transforms of a row, one for each column, scaled and
    // turned. The local transform of a joint without a parent is its global one. Several threads
    // may call this at the same time, each with a Scratch of its own. Throws ExportError if a
    // global transform is not finite.
    void Row(std::size_t row, std::span<headless::Transform> locals,
             std::span<headless::Transform> globals, Scratch& scratch) const;
    // The largest ExportedMotion::Size of all models. The number of decimals depends on it.
    double Size() const;
    const Notes& GetNotes() const { return notes_; }

    // The frame of a model's motion that is shown in a row.
    double FrameOf(const ExportedMotion& motion, std::size_t row) const;

  private:
    void AddColumns(const headless::Object& model, const ExportedMotion& motion, bool several);

    Notes notes_;
    Timeline timeline_;
    std::vector<ExportedMotion> motions_;
    std::vector<Column> columns_;
};

}  // namespace exporters
