// Collects what both table formats hold: the global transform of every joint, frame by frame.
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

// The columns are the joints of all models, model after model; the rows are the frames. All models
// share the timeline with the most frames. After the end of its motion a model keeps its last
// frame; a model without motion keeps its base pose. Keeps references to the scene.
class Table {
  public:
    // With `even`, the steps between the frames are equal (see EvenTimeline). Throws what
    // ExportedMotion throws, and ExportError if the models differ in their rate.
    Table(const headless::Scene& scene, const Options& options, bool even);

    struct Column {
        std::wstring name;                      // with several models: "model.joint"
        std::size_t parent = Joint::kNoParent;  // index of the parent's column
        headless::Transform rest;               // the local transform in the base pose
    };
    const std::vector<Column>& Columns() const { return columns_; }
    const Timeline& Times() const { return timeline_; }
    // At least 1: a table without motion has one row, the base pose.
    std::size_t Rows() const { return timeline_.IsPose() ? 1 : timeline_.frames.size(); }
    // Computes the global transforms of a row, one for each column. Throws ExportError if one is
    // not finite.
    void Row(std::size_t row, std::span<headless::Transform> globals);
    // The size of the largest skeleton (ExportedMotion::Size), from which decimals are chosen.
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
