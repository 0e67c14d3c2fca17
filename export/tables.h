// What both kinds of table hold: the transform of every joint in the scene, frame by frame.
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

// The joints of all models one after the other. All models share the frames of the longest; one
// whose motion ends earlier keeps its last frame, one without motion its base pose.
class Table {
  public:
    // Throws ExportError, also where models differ in their rate. With `even`, the frames are one
    // step apart.
    Table(const headless::Scene& scene, const Options& options, bool even);

    struct Column {
        std::wstring name;                      // begins with the model's where there are several
        std::size_t parent = Joint::kNoParent;  // index among the columns
        headless::Transform rest;               // in the base pose, seen from the parent
    };
    const std::vector<Column>& Columns() const { return columns_; }
    const Timeline& Times() const { return timeline_; }
    // At least one: a table without motion is the base pose.
    std::size_t Rows() const { return timeline_.IsPose() ? 1 : timeline_.frames.size(); }
    // One for each column, seen from the scene. Throws ExportError where one is not finite.
    void Row(std::size_t row, std::span<headless::Transform> globals);
    // Of all models, for rounding.
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
