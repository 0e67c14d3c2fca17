// What an import brought, for stdout.
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
    bool inPart = false;               // an error cut the import short
    // Models that were completed, the first ones of the scene; none: all of them.
    std::optional<std::size_t> models{};
    // Of the exports, where the user chose it.
    std::optional<double> framesPerSecond{};
    // The motion file that does not state its rate; empty: all do.
    std::string fileWithoutRate{};
};

void PrintSummary(const headless::Scene& scene, const SummaryRequest& request, const Print& print);

}  // namespace cli
