#include "export/table_blocks.h"

#include <algorithm>
#include <utility>

namespace exporters {

using math::PoseLanes;

TableBlocks::TableBlocks(const Table& table, const headless::Scene& scene, const Options& options)
    : table_(table) {
    const std::vector<ExportedModel> models = ExportedModels(scene, options);
    for (std::size_t model = 0; model < models.size(); ++model) {
        const ExportedMotion& motion = table.Models()[model];
        std::vector<double> frames(table.Rows());
        for (std::size_t row = 0; row < frames.size(); ++row)
            frames[row] = table.FrameOf(motion, row);
        models_.emplace_back(scene, *models[model].object, motion, std::move(frames), true);
        const std::size_t first = depths_.size();
        for (const Joint& joint : motion.Joints()) {
            modelOf_.push_back(model);
            jointOf_.push_back(jointOf_.size() - first);
            depths_.push_back(joint.parent == Joint::kNoParent ? 0
                                                               : depths_[first + joint.parent] + 1);
            deepest_ = std::max(deepest_, depths_.back());
        }
    }
}

void TableBlocks::Begin(std::size_t first, std::size_t count, Scratch& scratch) const {
    scratch.globals.resize(deepest_ + 1);
    scratch.models.resize(models_.size());
    for (std::size_t model = 0; model < models_.size(); ++model)
        models_[model].Begin(first, count, scratch.models[model]);
}

const PoseLanes& TableBlocks::Compute(std::size_t column, Scratch& scratch) const {
    const PoseBlocks::Scratch& model = scratch.models[modelOf_[column]];
    const std::size_t depth = depths_[column];
    PoseLanes& global = scratch.globals[depth];
    models_[modelOf_[column]].Local(jointOf_[column], model, scratch.local);
    // The joints are in depth-first order, so the last one of the depth above is the parent.
    if (depth == 0)
        global = scratch.local;
    else
        math::AttachPoses(scratch.globals[depth - 1], scratch.local, global);
    if (!math::AreFinite(global)) Refuse(model.first, model.count);
    return global;
}

void TableBlocks::Refuse(std::size_t first, std::size_t count) const {
    std::vector<headless::Transform> locals(depths_.size());
    std::vector<headless::Transform> globals(depths_.size());
    Table::Scratch scratch;
    for (std::size_t row = first; row < first + count; ++row)
        table_.Row(row, locals, globals, scratch);
    throw ExportError("the position or rotation of a joint is too large");
}

}  // namespace exporters
