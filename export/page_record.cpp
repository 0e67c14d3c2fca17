#include "export/page_record.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "export/body_sides.h"
#include "export/figure_facts.h"
#include "export/provenance.h"
#include "headless/text.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using nlohmann::json;

json ModelsJson(const headless::Scene& scene, const Options& options) {
    json names = json::array();
    for (const ExportedModel& model : ExportedModels(scene, options))
        names.push_back(text::EncodeUtf8(headless::View(model.object->name)));
    return names;
}

json JointsJson(const Table& table) {
    json joints = json::object();
    for (const char* member : {"names", "sourceNames", "parents", "ends", "models", "sides"})
        joints[member] = json::array();
    std::vector<std::wstring> names;
    for (const Table::Column& column : table.Columns()) {
        names.push_back(column.name);
        joints["names"].push_back(text::EncodeUtf8(column.name));
        joints["sourceNames"].push_back(text::EncodeUtf8(column.sourceName));
        joints["parents"].push_back(
            column.parent == Joint::kNoParent ? -1 : static_cast<std::int64_t>(column.parent));
        joints["ends"].push_back(column.isEndSite ? 1 : 0);
    }
    for (std::size_t model = 0; model < table.Models().size(); ++model)
        for (std::size_t joint = 0; joint < table.Models()[model].Joints().size(); ++joint)
            joints["models"].push_back(model);
    for (const Side side : SidesOf(names))
        joints["sides"].push_back(static_cast<int>(side));
    return joints;
}

// Returns the number under which the page shows the frame with this key number. Samples have other
// numbers than keys. Nullopt if the frame is not on the page.
std::optional<std::int64_t> NumberOnPage(const Table& table, std::int64_t key) {
    const std::vector<double>& frames = table.Times().frames;
    const auto frame = static_cast<double>(key);
    if (frames.empty() || frame < frames.front() || frame > frames.back()) return std::nullopt;
    auto row = std::lower_bound(frames.begin(), frames.end(), frame);
    if (row != frames.begin() && frame - *std::prev(row) < *row - frame) --row;
    return table.FrameNumber(static_cast<std::size_t>(std::distance(frames.begin(), row)));
}

json FindingsJson(const Table& table, const RunRecord* record) {
    json list = json::array();
    if (!record || !record->findings) return list;
    for (std::size_t index = 0; index < record->findings->size(); ++index) {
        json finding = json::parse((*record->findings)[index], nullptr, false);
        if (!finding.is_object()) continue;
        std::optional<std::int64_t> frame;
        if (index < record->findingFrames.size() && record->findingFrames[index])
            frame = NumberOnPage(table, *record->findingFrames[index]);
        if (frame) finding["frame"] = *frame;
        list.push_back(std::move(finding));
    }
    return list;
}

// Inside a script element, the text "<!--" or "</script" would not be read as data.
std::string WithoutLessThan(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (const char character : text) {
        if (character == '<')
            out += "\\u003c";
        else
            out += character;
    }
    return out;
}

}  // namespace

std::wstring TakeName(const headless::Scene& scene, const Options& options) {
    if (options.source.files.empty())
        return std::wstring(headless::View(ExportedModels(scene, options).front().object->name));
    const std::string& path = options.source.files.back().path;
    return text::DecodeUtf8(std::string_view(path).substr(path.rfind('/') + 1));
}

std::string PageRecord(const Table& table, const headless::Scene& scene, const Options& options,
                       const PageKeys& keys, const RunRecord* record) {
    const FigureFacts facts = DescribeFigure(table.FirstModel(), options);
    const std::size_t rows = table.Rows();
    const json take = {
        {"name", text::EncodeUtf8(TakeName(scene, options))},
        {"frames", rows},
        {"fps", FramesPerSecond(table.Times())},
        {"firstFrame", table.FrameNumber(0)},
        {"frameStep", rows > 1 ? table.FrameNumber(1) - table.FrameNumber(0) : 1},
        {"unit", facts.metresPerUnit},
        {"up", std::string(1, facts.up)},
        {"height", facts.height},
        {"models", ModelsJson(scene, options)},
        {"joints", JointsJson(table)},
        {"rest", keys.rest},
        {"values", keys.values},
        {"animated", keys.animated},
        {"findings", FindingsJson(table, record)},
        {"provenance", ProvenanceJson(options)},
        {"notes", table.GetNotes()},
    };
    constexpr bool kAscii = true;
    return WithoutLessThan(take.dump(-1, ' ', kAscii, json::error_handler_t::replace));
}

}  // namespace exporters
