// The table of output formats: the extension of each, the options that it honours and the function
// that writes it. Part of the public surface of the library.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/json_record.h"
#include "export/options.h"
#include "headless/scene.h"
#include "text/api.h"
#include "text/byte_sink.h"

namespace exporters {

// What is written. All of it stays with the caller.
struct Content {
    const headless::Scene& scene;
    const Options& options;
    // What happened in the run that made the scene. Only a format with `isRecord` needs it; for
    // others it may be null.
    const RunRecord* record = nullptr;
};

// Where the output is written to. The sinks stay with the caller.
struct Sinks {
    text::ByteSink& out;
    // The second file of a format with two files, and the name by which the first file refers to
    // it. For a format with one file `side` may be null.
    text::ByteSink* side = nullptr;
    std::string_view sideName{};
};

// A bit for each option that only some formats honour.
enum Honoured : unsigned {
    kScale = 1U << 0U,
    kUpAxis = 1U << 1U,
    kRate = 1U << 2U,
    kResampling = 1U << 3U,
    kMesh = 1U << 4U,
    kDigits = 1U << 5U,
    kFrames = 1U << 6U,
};

struct Format {
    std::string_view extension;      // in lower case, with its dot
    std::string_view sideExtension;  // of the second file; empty if the format has one file
    unsigned honoured = 0;           // bits of Honoured
    // Whether the output is the record of a run: the scene without any option applied, and what
    // happened. It is written for a failed import too.
    bool isRecord = false;
    // Writes the output and returns what was left out. Throws ExportError, and what the sinks
    // throw.
    Notes (*write)(const Content& content, const Sinks& sinks) = nullptr;
};

// All formats, in the order in which users are shown them.
ZKMOCAP_API std::span<const Format> Formats();

// Finds a format by its extension, in lower case and with its dot (".glb"). Null if no format has
// this extension.
ZKMOCAP_API const Format* FindFormat(std::string_view extension);

// The paths of the one or two files that an output consists of. The first is `path`, which ends in
// the extension of the format, in any letter case.
ZKMOCAP_API std::vector<std::string> FilesOf(const Format& format, const std::string& path);

// Writes the output. Returns an empty text if it was written, otherwise one line that says why it
// cannot be written in this format; the sinks may then hold a part of it. `notes` receives what was
// left out. Exceptions of the sinks are passed on.
ZKMOCAP_API std::string Write(const Format& format, const Content& content, const Sinks& sinks,
                              Notes& notes);

}  // namespace exporters
