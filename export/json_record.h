// The record of a run: what the callback returned, what happened, and what is in the scene.
// Part of the public surface of the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "headless/session.h"
#include "text/byte_sink.h"

namespace exporters {

struct RunRecord {
    std::int32_t result;  // the callback's
    const std::vector<headless::LogLine>& log;
    const std::vector<headless::BarEvent>& bar;
    const std::vector<headless::CommandRecord>& commands;
    // What the plug-in recorded of its arguments, as a JSON object.
    std::string userInput{};
    // What a survey of the files found, each as a JSON object; none without a survey.
    std::optional<std::vector<std::string>> findings{};
    // The factor on the scene's lengths beside that of their unit; written where it is not 1.
    double multiplied = 1.0;
};

// Streams the record, an object of the scene or an item of an action a line; needs memory for one
// line only, however long the motion.
void WriteJsonRecord(text::ByteSink& out, const headless::Scene& scene, const RunRecord& record);

}  // namespace exporters
