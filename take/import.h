// One import. It reads capture files, or texts in memory, and makes a scene.
//
// An import does not change the locale of the process; it changes the calling thread's locale only
// while the plug-in runs. It sets no signal handlers, unless the storage does, and writes nothing
// to the standard streams. The result says what went wrong. Only std::bad_alloc is thrown, when
// memory runs out.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "headless/session.h"
#include "plugin/user_input.h"
#include "survey/outline.h"
#include "take/findings.h"
#include "take/listener.h"
#include "take/outcome.h"
#include "take/plugin_library.h"
#include "take/rate_origin.h"
#include "take/request.h"
#include "text/api.h"
#include "text/storage.h"

namespace take {

// The result of an import. It owns its scene, and another import does not change it. So a program
// may keep any number of results, and several threads may read one result at once.
struct Result {
    Outcome outcome;
    // Why the plug-in was not called, in one line: a temporary file, with a mended or an unpacked
    // text or with a file from memory, could not be written. Empty if the plug-in was called or if
    // the files were refused.
    std::string problem;
    // Whether the survey refused the files, or a packed file could not be unpacked; the findings
    // say why.
    bool isRefused = false;
    // One element for each file. Without a survey, one for each packed file that could not be
    // unpacked.
    std::vector<FileFindings> findings;

    std::int32_t code = 0;          // what the callback returned; 0 even for a failed import
    headless::Recording recording;  // the scene (never null), log, progress bar and commands
    USERINPUT userInput;            // the plug-in's record of the arguments, with absolute paths

    // The take's rate, if the request or the survey decided it. If nullopt, the take's rate is the
    // one at which the plug-in imported the motion.
    std::optional<double> framesPerSecond;
    RateOrigin rateOrigin = RateOrigin::File;
    // The rate that the file states, whatever rate the take has. Nullopt if it states none, and
    // without a survey.
    std::optional<double> statedRate;
    // The factor that the plug-in was given for an Acclaim skeleton's lengths. If nullopt, the
    // plug-in used the factor in the skeleton file.
    std::optional<double> lengthMultiplier;
    // The survey enlarges a skeleton whose bones are too short for the plug-in. All lengths of the
    // scene are then multiplied by this factor, and exports divide by it. 1 if nothing was
    // enlarged.
    double multiplied = 1.0;
    // The joints and end sites of the files, one outline for each model. Empty if the files could
    // not be read, and with Request::asIs if nulls were built.
    std::vector<survey::Outline> outlines;

    bool IsImported() const {
        return outcome.status == Status::Imported || outcome.status == Status::ImportedInPart;
    }
    const headless::Scene& Scene() const { return *recording.scene; }
    // Why the import failed, in one line: the problem, the finding that refused the files, the
    // first error of the log, or "cancelled". Empty if the import did not fail.
    ZKMOCAP_API std::string FirstError() const;
};

// Surveys the files, mends what it can, and lets the plug-in build the scene. Several threads may
// call Import at the same time. The plug-in runs for only one of them at a time; the others wait.
ZKMOCAP_API Result Import(const Plugin& plugin, const Request& request, text::Storage& storage,
                          const Listener& listener = {});

}  // namespace take
