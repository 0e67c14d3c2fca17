// Writes the record of a run: what the callback returned, what happened, and what is in the scene.
// Part of the public surface of the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "headless/session.h"
#include "text/byte_sink.h"

namespace exporters {

// The lists that are referred to stay with the caller.
struct RunRecord {
    std::int32_t result;  // what the plug-in's callback returned
    const std::vector<headless::LogLine>& log;
    const std::vector<headless::BarEvent>& bar;
    const std::vector<headless::CommandRecord>& commands;
    // What the plug-in recorded of its arguments, as the text of a JSON object. It is written as it
    // is, so it must not be empty.
    std::string userInput{};
    // The findings of the survey of the files, each as the text of a JSON object. Without a survey
    // there is no list.
    std::optional<std::vector<std::string>> findings{};
    // The factor by which the scene's lengths were multiplied, apart from the factor of their unit.
    // It is written only if it is not 1.
    double multiplied = 1.0;
};

// Writes the record, with a line for each object of the scene and for each item of an action. Needs
// memory for one line and for the text of one curve's key times. Errors of `out` are passed on.
void WriteJsonRecord(text::ByteSink& out, const headless::Scene& scene, const RunRecord& record);

}  // namespace exporters
