// One import, from files or memory to a scene.
//
// The library sets no locale and no signal handler, and writes nothing to the standard streams.
// The result says what went wrong; only std::bad_alloc is thrown, where memory runs out.
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

// The result of an import. It owns its scene and does not change when another import runs, so that
// a program may keep any number of results and read each from several threads at once.
struct Result {
    Outcome outcome;
    // Why the plug-in could not be called, in one line: a temporary file with a mended text, or
    // with a file from memory, could not be written. Empty: it was called, or the files were
    // refused.
    std::string problem;
    // Whether the survey refused the files; the findings say why.
    bool isRefused = false;
    // One element for each file; empty without a survey.
    std::vector<FileFindings> findings;

    std::int32_t code = 0;          // the callback's result, 0 even for a failed import
    headless::Recording recording;  // the scene (never null), log, progress bar and commands
    USERINPUT userInput;            // the plug-in's record of its arguments, with absolute paths

    // The take's rate, if the request or the survey decided it. None: it is the rate at which the
    // plug-in imported the motion.
    std::optional<double> framesPerSecond;
    // The factor that the plug-in was given for an Acclaim skeleton's lengths. None: it used the
    // factor in the skeleton file.
    std::optional<double> lengthMultiplier;
    // The survey enlarges a skeleton whose bones are too short for the plug-in. This is the factor
    // on all lengths of the scene; exports divide by it. 1: nothing was enlarged.
    double multiplied = 1.0;

    bool IsImported() const {
        return outcome.status == Status::Imported || outcome.status == Status::ImportedInPart;
    }
    const headless::Scene& Scene() const { return *recording.scene; }
    // Why the import failed, in one line: the problem, the finding that refused the files, the
    // first error of the log, or "cancelled". Empty: it did not fail.
    ZKMOCAP_API std::string FirstError() const;
};

// Surveys the files, mends what it can, and lets the plug-in build the scene. Several threads may
// call this; a second import in the same process waits until the first one has ended.
ZKMOCAP_API Result Import(const Plugin& plugin, const Request& request, text::Storage& storage,
                          const Listener& listener = {});

}  // namespace take
