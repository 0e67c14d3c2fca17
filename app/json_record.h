// The record of a run: what the callback returned, what happened, and what stands in the scene.
#pragma once

#include <cstdint>
#include <vector>

#include "app/finding_text.h"
#include "headless/session.h"
#include "plugin/user_input.h"
#include "text/byte_sink.h"

namespace app {

struct RunRecord {
    std::int32_t result;  // the callback's
    const headless::Session& session;
    const std::vector<headless::LogLine>& log;
    USERINPUT userInput;
    // What the survey of the files found; null without a survey.
    const std::vector<FileFindings>* findings = nullptr;
    // What the scene's lengths are multiplied by beyond their unit; told where it is not 1.
    double multiplied = 1.0;
};

// Streams the record, an object of the scene or an item of an action a line; needs memory for one
// line only, however long the motion.
void WriteJsonRecord(text::ByteSink& out, const RunRecord& record);

}  // namespace app
