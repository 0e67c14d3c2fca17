#include "export/npz.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "export/array_writer.h"
#include "export/figure_facts.h"
#include "export/npz_poses.h"
#include "export/provenance.h"
#include "export/table_blocks.h"
#include "export/tables.h"
#include "text/byte_sink.h"

namespace exporters {
namespace {

// Returns the length of the longest name, in characters. Every name takes this many characters in
// the array of names, so one long name can make the array very large. Throws ExportError if the
// array would be too large.
std::size_t NameWidth(const Table& table) {
    constexpr std::size_t kMostCharacters = std::size_t{16} << 20;
    std::size_t width = 1;
    for (const Table::Column& column : table.Columns())
        width = std::max({width, column.name.size(), column.sourceName.size()});
    if (width * table.Columns().size() > kMostCharacters)
        throw ExportError(
            fmt::format("the names need too much space: each of {} joints needs the {} characters"
                        " of the longest name",
                        table.Columns().size(), width));
    return width;
}

// Writes a name of each column with `width` characters. NUL characters are appended to a shorter
// name.
void AddNames(ArrayWriter& arrays, const std::string& name, const Table& table,
              std::wstring Table::Column::*member, std::size_t width) {
    std::vector<wchar_t> text(width * table.Columns().size(), L'\0');
    auto at = text.begin();
    for (const Table::Column& column : table.Columns()) {
        std::transform((column.*member).begin(), (column.*member).end(), at, ValidCharacter);
        at += static_cast<std::ptrdiff_t>(width);
    }
    const std::string shape = fmt::format("({},)", table.Columns().size());
    arrays.Add(name, fmt::format("<U{}", width), shape, BytesOf(text));
}

void AddSkeleton(ArrayWriter& arrays, const Table& table, std::size_t nameWidth) {
    std::vector<double> offsets;
    std::vector<std::int32_t> parents;
    std::vector<std::uint8_t> isEnd;
    for (const Table::Column& column : table.Columns()) {
        offsets.insert(offsets.end(), column.rest.origin, column.rest.origin + 3);
        parents.push_back(
            column.parent == Joint::kNoParent ? -1 : static_cast<std::int32_t>(column.parent));
        isEnd.push_back(column.isEndSite ? 1 : 0);
    }
    const std::string shape = fmt::format("({},)", parents.size());
    arrays.AddNumbers("offsets", fmt::format("({}, 3)", parents.size()), std::move(offsets));
    arrays.AddNumbers("parents", shape, std::move(parents));
    AddNames(arrays, "names", table, &Table::Column::name, nameWidth);
    AddNames(arrays, "source_names", table, &Table::Column::sourceName, nameWidth);
    arrays.AddNumbers("is_end", shape, std::move(isEnd));
}

void AddTimes(ArrayWriter& arrays, const Table& table) {
    std::vector<double> times;
    std::vector<std::int64_t> numbers;
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        times.push_back(table.Seconds(row));
        numbers.push_back(table.FrameNumber(row));
    }
    const std::string shape = fmt::format("({},)", table.Rows());
    arrays.AddNumbers("times", shape, std::move(times));
    arrays.AddNumbers("frame_numbers", shape, std::move(numbers));
    arrays.AddNumbers("fps", "()", std::vector<double>{FramesPerSecond(table.Times())});
}

std::string FindingsText(const std::vector<std::string>& findings) {
    return fmt::format("[{}]", fmt::join(findings, ", "));
}

}  // namespace

Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const std::vector<std::string>& findings, const Progress& progress) {
    const Table table(scene, options, true);
    const std::size_t nameWidth = NameWidth(table);
    const FigureFacts facts = DescribeFigure(table.FirstModel(), options);
    const TableBlocks blocks(table, scene, options);
    ArrayWriter arrays(out, options.compress.value_or(false));
    AddPoses(arrays, blocks, options.float32, progress);
    AddSkeleton(arrays, table, nameWidth);
    AddTimes(arrays, table);
    arrays.AddNumbers("unit", "()", std::vector<double>{facts.metresPerUnit});
    arrays.AddText("up", std::string(1, facts.up));
    arrays.AddText("findings", FindingsText(findings));
    arrays.AddText("provenance", ProvenanceJson(options).dump());
    arrays.Finish();
    return table.GetNotes();
}

}  // namespace exporters
