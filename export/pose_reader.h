// Reads the poses of a scene into memory: the arrays that a .npz holds.
// Part of the public surface of the library.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/api.h"

namespace exporters {

struct PoseColumn {
    // "joint" or, with several models, "model.joint", in UTF-8. All names are different.
    std::string name;
    std::string sourceName;  // the joint's name in the file
    // The index of the parent's column; FileJoint::kNoParent if there is none. A parent comes
    // before its children.
    std::size_t parent = FileJoint::kNoParent;
    bool isEndSite = false;
    std::array<double, 3> offset{};  // the position in the base pose, as seen from the parent
};

// What the arrays are about. The columns are the joints of all models, the rows are the frames.
struct PoseTable {
    std::vector<PoseColumn> columns;
    std::vector<double> seconds;             // one for each row, from the first row on
    std::vector<std::int64_t> frameNumbers;  // the scene's number of each row's frame
    double framesPerSecond = 0.0;            // 0 if there is no motion; there is then one row
    Notes notes;
};

// What the figure tells about its unit. Of several models, this is about the first one.
struct PoseFigure {
    double metresPerUnit = 0.0;  // 0 if it is not known
    double height = 0.0;         // in the unit of the positions; 0 if it is not known
    char up = 'y';               // 'x', 'y' or 'z'
};

// Memory of the caller for one number after the other: row after row, in a row column after column,
// three numbers for a position, four for a quaternion (x, y, z, w).
struct PoseMemory {
    double* positions = nullptr;         // global
    double* quaternions = nullptr;       // global
    double* localPositions = nullptr;    // as seen from the parent; of a top joint, global
    double* localQuaternions = nullptr;  // as seen from the parent; of a top joint, global
};

// Several threads may use one reader at once. It keeps references to the scene, which must outlive
// it.
class ZKMOCAP_API PoseReader {
  public:
    // Reads what the arrays are about. If the scene cannot be read, `problem` says why in one line,
    // and the table is empty.
    PoseReader(const headless::Scene& scene, const Options& options, std::string& problem);
    ~PoseReader();
    PoseReader(const PoseReader&) = delete;
    PoseReader& operator=(const PoseReader&) = delete;

    const PoseTable& Table() const { return facts_; }
    // Looks at the figure in up to 500 frames.
    PoseFigure Figure() const;
    // Computes all arrays in one pass over the motion, with at most `threads` threads, or as many
    // as the system has processors if that is 0. Returns an empty text, or one line that says why
    // the poses cannot be read. Passes on what `progress` throws.
    std::string Read(const PoseMemory& memory, std::size_t threads,
                     const Progress& progress = {}) const;

  private:
    struct Impl;
    std::unique_ptr<const Impl> impl_;  // null if the scene cannot be read
    PoseTable facts_;
};

}  // namespace exporters
