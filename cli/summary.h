// Prints the summary of an import.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/print.h"
#include "headless/scene.h"

namespace cli {

struct SummaryRequest {
    std::vector<std::string> files{};  // the paths of the files, as the user wrote them
    bool inPart = false;               // an error ended the import after some models
    // How many models are complete. They are the first models of the scene. nullopt: all models.
    std::optional<std::size_t> models{};
    // The take's rate, if it may differ from the rate of the imported motion. nullopt: it is the
    // rate of the imported motion.
    std::optional<double> framesPerSecond{};
    // The path of the motion file if it does not state its rate; otherwise empty.
    std::string fileWithoutRate{};
};

void PrintSummary(const headless::Scene& scene, const SummaryRequest& request, const Print& print);

}  // namespace cli
