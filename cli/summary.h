// The summary of an import, for stdout.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/print.h"
#include "headless/scene.h"

namespace cli {

struct SummaryRequest {
    std::vector<std::string> files{};  // as the user named them
    bool inPart = false;               // an error ended the import after some models
    // How many models are complete; these are the first ones of the scene. None: all models.
    std::optional<std::size_t> models{};
    // The take's rate, where it differs from the one of the imported motion.
    std::optional<double> framesPerSecond{};
    // The motion file, where it does not state its rate; otherwise empty.
    std::string fileWithoutRate{};
};

void PrintSummary(const headless::Scene& scene, const SummaryRequest& request, const Print& print);

}  // namespace cli
