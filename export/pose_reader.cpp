#include "export/pose_reader.h"

#include <algorithm>

#include "export/figure_facts.h"
#include "export/pose_arrays.h"
#include "export/tables.h"
#include "text/wide_text.h"

namespace exporters {

struct PoseReader::Impl {
    Impl(const headless::Scene& scene, const Options& chosen)
        : table(scene, chosen, true), blocks(table, scene, chosen), options(chosen) {}

    exporters::Table table;
    TableBlocks blocks;
    Options options;
};

namespace {

PoseColumn ColumnOf(const Table::Column& column) {
    PoseColumn described;
    described.name = text::EncodeUtf8(column.name);
    described.sourceName = text::EncodeUtf8(column.sourceName);
    if (column.parent != Joint::kNoParent) described.parent = column.parent;
    described.isEndSite = column.isEndSite;
    std::copy_n(column.rest.origin, 3, described.offset.begin());
    return described;
}

PoseTable Describe(const Table& table) {
    PoseTable described;
    for (const Table::Column& column : table.Columns())
        described.columns.push_back(ColumnOf(column));
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        described.seconds.push_back(table.Seconds(row));
        described.frameNumbers.push_back(table.FrameNumber(row));
    }
    described.framesPerSecond = FramesPerSecond(table.Times());
    described.notes = table.GetNotes();
    return described;
}

}  // namespace

PoseReader::PoseReader(const headless::Scene& scene, const Options& options, std::string& problem) {
    try {
        impl_ = std::make_unique<const Impl>(scene, options);
        facts_ = Describe(impl_->table);
    } catch (const ExportError& error) {
        impl_.reset();
        problem = error.what();
    }
}

PoseReader::~PoseReader() = default;

PoseFigure PoseReader::Figure() const {
    if (!impl_) return {};
    const FigureFacts facts = DescribeFigure(impl_->table.FirstModel(), impl_->options);
    return {facts.metresPerUnit, facts.height, facts.up};
}

std::string PoseReader::Read(const PoseMemory& memory, std::size_t threads,
                             const Progress& progress) const {
    if (!impl_ || impl_->table.Columns().empty()) return {};
    const PosePointers<double> pointers{memory.positions, memory.quaternions, memory.localPositions,
                                        memory.localQuaternions};
    try {
        FillPoseArrays(impl_->blocks, pointers, threads, progress);
    } catch (const ExportError& error) {
        return error.what();
    }
    return {};
}

}  // namespace exporters
