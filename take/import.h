// One import, from files or memory to a scene.
//
// The library sets no locale and no signal handler, and writes nothing to the standard streams.
// What goes wrong is in the result; only lack of memory is thrown (std::bad_alloc).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "headless/session.h"
#include "plugin/user_input.h"
#include "take/findings.h"
#include "take/listener.h"
#include "take/outcome.h"
#include "take/plugin_library.h"
#include "take/request.h"
#include "text/api.h"
#include "text/storage.h"

namespace take {

// What an import brought. It owns its scene: any number of results exist side by side, stay as they
// are, and may be read from several threads at once.
struct Result {
    Outcome outcome;
    // Why there was nothing to import with, in one line (a text could not be handed to the
    // plug-in); empty otherwise.
    std::string problem;
    // Whether the survey refused the files; the findings say why.
    bool isRefused = false;
    // Of each file; empty without a survey.
    std::vector<FileFindings> findings;

    std::int32_t code = 0;  // the callback's, 0 even for a failed import
    headless::Recording
        recording;        // the scene, the log and what else happened; never without a scene
    USERINPUT userInput;  // the plug-in's record of its arguments, files as the user named them

    // The take's rate, where it is not the one that the motion has.
    std::optional<double> framesPerSecond;
    // The factor on an Acclaim skeleton's lengths, where it is not the file's own.
    std::optional<double> lengthMultiplier;
    // What the scene's lengths are multiplied by beyond their unit; exports divide by it.
    double multiplied = 1.0;

    bool IsImported() const {
        return outcome.status == Status::Imported || outcome.status == Status::ImportedInPart;
    }
    const headless::Scene& Scene() const { return *recording.scene; }
    // The first error of the survey or in the log, in one line; empty without one.
    ZKMOCAP_API std::string FirstError() const;
};

// Surveys the files, mends what it can, and has the plug-in build the scene. Imports in one process
// run one after the other, from whatever threads they are asked for.
ZKMOCAP_API Result Import(const Plugin& plugin, const Request& request, text::Storage& storage,
                          const Listener& listener = {});

}  // namespace take
