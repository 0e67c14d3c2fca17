// Prints the summary of an import.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "cli/print.h"
#include "export/file_skeleton.h"
#include "headless/scene.h"
#include "take/rate_origin.h"

namespace cli {

struct SummaryRequest {
    std::vector<std::string> files{};  // the paths of the files, as the user wrote them
    bool inPart = false;               // an error ended the import after some models
    // How many models are complete. Only the complete models are printed; they are the first models
    // of the scene. nullopt: all models are complete.
    std::optional<std::size_t> models{};
    // The rate of the take. It may differ from the rate of the imported motion. nullopt: the take
    // has the rate of the imported motion.
    std::optional<double> framesPerSecond{};
    take::RateOrigin rateOrigin = take::RateOrigin::File;
    // The path of a motion file for which the summary has to say that the file does not state its
    // rate. Empty: the summary says nothing about a missing rate.
    std::string fileWithoutRate{};
    // The skeletons of the files, one for each model; may be empty.
    std::vector<exporters::FileSkeleton> skeletons{};
};

void PrintSummary(const headless::Scene& scene, const SummaryRequest& request, const Print& print);

}  // namespace cli
