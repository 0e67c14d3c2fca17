#include "cli/summary.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <string_view>

#include "cli/rate_text.h"
#include "export/motion_facts.h"
#include "headless/text.h"
#include "text/escapes.h"
#include "text/wide_text.h"

namespace cli {
namespace {

using headless::Object;

std::string Readable(std::wstring_view text) {
    return text::EncodeUtf8(text::EscapeControls(text));
}

std::string Counted(std::size_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string JoinedFiles(const std::vector<std::string>& files) {
    std::string text;
    for (const std::string& file : files) {
        if (!text.empty()) text += " + ";
        text += Readable(text::DecodeUtf8(file));
    }
    return text;
}

std::string_view OriginText(take::RateOrigin origin) {
    switch (origin) {
        case take::RateOrigin::Request:
            return "(from --fps)";
        case take::RateOrigin::Preset:
            return "(from the preset cmu)";
        case take::RateOrigin::Assumed:
            return "(assumed, the file states none)";
        case take::RateOrigin::File:
            break;
    }
    return "(from the file)";
}

std::string JointsText(const exporters::ModelFacts& facts) {
    const std::string joints = Counted(facts.joints, "joint");
    return facts.endSites == 0 ? joints : joints + ", " + Counted(facts.endSites, "end site");
}

std::string MotionText(const exporters::ModelFacts& facts, const SummaryRequest& request) {
    const double secondsPerFrame =
        request.framesPerSecond ? 1.0 / *request.framesPerSecond : facts.secondsPerFrame;
    std::string counts = Counted(facts.curves, "curve") + ", " + Counted(facts.frames, "frame");
    if (facts.frames == 0) return counts;
    if (secondsPerFrame == 0.0) return counts + ", frame rate unknown";
    // The duration of the last frame is added to the time from the first frame to the last.
    const double seconds = (facts.lastFrame - facts.firstFrame + 1.0) * secondsPerFrame;
    return fmt::format("{}, {} seconds, {} frames per second {}", counts, ShortNumber(seconds),
                       ShortNumber(1.0 / secondsPerFrame), OriginText(request.rateOrigin));
}

std::string ClipsText(const headless::ModelData& model) {
    std::string text;
    for (const headless::Clip& clip : model.clips)
        text += ", clip " + Readable(headless::View(clip.name));
    return text;
}

void PrintModel(const headless::Scene& scene, const Object& model,
                const exporters::FileSkeleton* skeleton, const SummaryRequest& request,
                const Print& print) {
    const exporters::ModelFacts facts = exporters::MeasureModel(scene, model, skeleton);
    const bool hasMotion = exporters::MotionOf(model) != nullptr;
    print(fmt::format("  {}: {}, {}{}\n", Readable(headless::View(model.name)), JointsText(facts),
                      hasMotion ? MotionText(facts, request) : "no motion",
                      model.modelData ? ClipsText(*model.modelData) : ""));
    if (facts.badKeys > 0)
        print(fmt::format("    {} not finite (nan or inf)\n",
                          facts.badKeys == 1 ? "1 key value is"
                                             : fmt::format("{} key values are", facts.badKeys)));
    if (facts.badRestValues > 0)
        print(fmt::format("    {} not finite (nan or inf)\n",
                          facts.badRestValues == 1 ? "1 value of the base pose is"
                                                   : fmt::format("{} values of the base pose are",
                                                                 facts.badRestValues)));
    if (!request.fileWithoutRate.empty() && facts.secondsPerFrame > 0.0) {
        const std::string file = Readable(text::DecodeUtf8(request.fileWithoutRate));
        const std::string assumed = ShortNumber(1.0 / facts.secondsPerFrame);
        if (request.framesPerSecond)
            print(
                fmt::format("    {} does not state its rate: {} frames per second assumed;"
                            " exports use {}\n",
                            file, assumed, ShortNumber(*request.framesPerSecond)));
        else
            print(
                fmt::format("    {} does not state its rate: {} frames per second assumed;"
                            " --fps N changes it for exports\n",
                            file, assumed));
    }
}

}  // namespace

void PrintSummary(const headless::Scene& scene, const SummaryRequest& request, const Print& print) {
    const std::vector<const Object*> models = scene.Models();
    const std::size_t count = std::min(models.size(), request.models.value_or(models.size()));
    print(fmt::format("{}: {} imported{}\n", JoinedFiles(request.files), Counted(count, "model"),
                      request.inPart ? ", then an error" : ""));
    for (std::size_t index = 0; index < count; ++index) {
        const bool isKnown = index < request.skeletons.size();
        PrintModel(scene, *models[index], isKnown ? &request.skeletons[index] : nullptr, request,
                   print);
    }
}

}  // namespace cli
