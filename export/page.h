// Writes pages that show takes in a browser.
// Part of the public surface of the library.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "export/json_record.h"
#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/api.h"
#include "text/byte_sink.h"

namespace exporters {

// A take as a page holds it. docs/viewer.md describes the format.
struct PageTake {
    std::string title;   // the name of the take, in UTF-8
    std::string record;  // the text of a JSON object
    std::string keys;    // the motion, packed, as text
    Notes notes;         // what was left out
};

// Whether the library was built with the viewer. Without it, BuildPageTake throws ExportError.
ZKMOCAP_API bool HasViewer();

// Packs the models of a scene. `record` has the findings that the page lists; it may be null.
// Throws ExportError, and what `progress` throws.
ZKMOCAP_API PageTake BuildPageTake(const headless::Scene& scene, const Options& options,
                                   const RunRecord* record, const Progress& progress = {});

// Writes one HTML file that shows the takes together. It needs no other file and no network.
// `takes` must not be empty, and the viewer must be there. Passes on what `out` throws.
ZKMOCAP_API void WritePage(text::ByteSink& out, std::span<const PageTake> takes);

}  // namespace exporters
