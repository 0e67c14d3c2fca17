// Collects what the CSV and numpy formats hold: the global transform of every joint in each frame.
// Internal to export/.
#pragma once

#include <cstddef>
#include <functional>
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
    // If `even` is set, the steps between the frames are made equal (see EvenTimeline). Throws what
    // ExportedMotion throws, and ExportError if the models differ in their rate.
    Table(const headless::Scene& scene, const Options& options, bool even);

    struct Column {
        std::wstring name;                      // "joint" or, with several models, "model.joint"
        std::size_t parent = Joint::kNoParent;  // index of the parent's column; kNoParent if none
        headless::Transform rest;               // as seen from the parent in the base pose, scaled
    };
    const std::vector<Column>& Columns() const { return columns_; }
    const Timeline& Times() const { return timeline_; }
    // At least 1: a table without motion has one row, the base pose.
    std::size_t Rows() const { return timeline_.IsPose() ? 1 : timeline_.frames.size(); }
    // Computes the global transforms of a row, one for each column. Throws ExportError if one of
    // them is not finite.
    void Row(std::size_t row, std::span<headless::Transform> globals);
    // The largest ExportedMotion::Size of all models. The number of decimals depends on it.
    double Size();
    const Notes& GetNotes() const { return notes_; }

  private:
    void AddColumns(const headless::Object& model, ExportedMotion& motion, bool several);

    Notes notes_;
    Timeline timeline_;
    std::vector<ExportedMotion> motions_;
    std::vector<Column> columns_;
};

}  // namespace exporters
