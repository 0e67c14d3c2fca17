// The one table of outputs: what each is called, which options it honours and what writes it.
// Part of the public surface of the library.
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

// What an output is made of.
struct Content {
    const headless::Scene& scene;
    const Options& options;
    // How the scene came about. Only formats that are a record need it.
    const RunRecord* record = nullptr;
};

// Where it is written to.
struct Sinks {
    text::ByteSink& out;
    // Of a format with two files, the second and the name by which the first refers to it.
    text::ByteSink* side = nullptr;
    std::string_view sideName{};
};

// Options that only some formats honour.
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
    std::string_view sideExtension;  // of the second file; empty where there is one file
    unsigned honoured = 0;           // of Honoured
    // The output is the record of a run: the scene as it is and what happened. It is written for a
    // failed import too.
    bool isRecord = false;
    // Throws ExportError, and what the sinks throw.
    Notes (*write)(const Content& content, const Sinks& sinks) = nullptr;
};

// In the order in which people are told of them.
ZKMOCAP_API std::span<const Format> Formats();

// By an extension in lower case, with its dot (".glb"); null for one that no format has.
ZKMOCAP_API const Format* FindFormat(std::string_view extension);

// The files that an output of that path, which ends in the extension, consists of; its own first.
ZKMOCAP_API std::vector<std::string> FilesOf(const Format& format, const std::string& path);

// Writes the output. Returns why it cannot be written in this format, in one line; empty where it
// was. `notes` tell what was left out. Exceptions of the sinks are passed on.
ZKMOCAP_API std::string Write(const Format& format, const Content& content, const Sinks& sinks,
                              Notes& notes);

}  // namespace exporters
