// The table of output formats. It holds the extension of each format, the options that the format
// honours and the function that writes it.
// Part of the public surface of the library.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/json_record.h"
#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/api.h"
#include "text/byte_sink.h"

namespace exporters {

// What is written. The caller owns everything that this struct refers to.
struct Content {
    const headless::Scene& scene;
    const Options& options;
    // What happened in the run that made the scene. It may be null unless Format::isRecord is set.
    const RunRecord* record = nullptr;
    // Receives how much of the output is done, and may cancel. By default nobody receives it.
    Progress progress = {};
};

// The sinks to which an output is written. The caller owns them.
struct Sinks {
    text::ByteSink& out;
    // The sink for the second file of a format with two files. It may be null if the format has one
    // file.
    text::ByteSink* side = nullptr;
    // The name by which the first file refers to the second one.
    std::string_view sideName{};
};

// A bit for each option that only some formats honour. The comments name the members of Options.
enum Honoured : unsigned {
    kScale = 1U << 0U,        // scale
    kUpAxis = 1U << 1U,       // up
    kRate = 1U << 2U,         // framesPerSecond
    kResampling = 1U << 3U,   // resampleTo
    kMesh = 1U << 4U,         // mesh
    kDigits = 1U << 5U,       // digits
    kFrames = 1U << 6U,       // frames
    kInPlace = 1U << 7U,      // inPlace
    kAllNodes = 1U << 8U,     // allNodes
    kAim = 1U << 9U,          // aim
    kAnimations = 1U << 10U,  // animationPerModel
    kFloat32 = 1U << 11U,     // float32
    kCompress = 1U << 12U,    // compress
    kProvenance = 1U << 13U,  // source
};

struct Format {
    std::string_view extension;      // in lower case, with its dot
    std::string_view sideExtension;  // extension of the second file; empty if there is none
    unsigned honoured = 0;           // bits of Honoured
    // Whether the output is the record of a run: what happened in it, and the scene without any
    // option applied. Such an output is written even if the import failed.
    bool isRecord = false;
    // Writes the output and returns notes about what was left out. Throws ExportError, and what the
    // sinks and Content::progress throw.
    Notes (*write)(const Content& content, const Sinks& sinks) = nullptr;
};

// All formats, in the order in which users are shown them.
ZKMOCAP_API std::span<const Format> Formats();

// Finds a format by its extension, which must be in lower case and with its dot (".glb"). Null if
// no format has this extension.
ZKMOCAP_API const Format* FindFormat(std::string_view extension);

// Returns the paths of the one or two files of an output. The first is `path`, which must end with
// the extension of the format, in any letter case.
ZKMOCAP_API std::vector<std::string> FilesOf(const Format& format, const std::string& path);

// Writes the output. Returns an empty text if the output was written. If the scene cannot be
// written in this format, returns one line that says why. The sinks may hold a part of the output
// in that case. `notes` receives notes about what was left out. Passes on what the sinks
// and `content.progress` throw.
ZKMOCAP_API std::string Write(const Format& format, const Content& content, const Sinks& sinks,
                              Notes& notes);

}  // namespace exporters
