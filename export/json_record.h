// Writes the record of a run: what the plug-in's callback returned, what happened, and the scene.
// Part of the public surface of the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "export/progress.h"
#include "headless/session.h"
#include "text/byte_sink.h"

namespace exporters {

// The caller owns the lists to which this struct refers.
struct RunRecord {
    std::int32_t result;  // what the plug-in's callback returned
    const std::vector<headless::LogLine>& log;
    const std::vector<headless::BarEvent>& bar;
    const std::vector<headless::CommandRecord>& commands;
    // The arguments of the import as the plug-in stored them. This is the text of a JSON object. It
    // is written unchanged, so it must not be empty.
    std::string userInput{};
    // The findings of the survey of the files, each as the text of a JSON object. If there was no
    // survey, this is not set, and the record has no member "findings".
    std::optional<std::vector<std::string>> findings{};
    // The number of the frame that each finding is about; nullopt if it is about none. The record
    // does not have these numbers. May be shorter than `findings`.
    std::vector<std::optional<std::int64_t>> findingFrames{};
    // If the bones of a skeleton are too short for the plug-in, the lengths of the scene are
    // multiplied by this factor. It is written only if it is not 1.
    double multiplied = 1.0;
};

// Writes the record. Each object of the scene and each item of an action begins a line. Needs
// memory for one line and for the text of one curve's key times. Passes on what `out` and
// `progress` throw.
void WriteJsonRecord(text::ByteSink& out, const headless::Scene& scene, const RunRecord& record,
                     const Progress& progress = {});

}  // namespace exporters
