#include "python/scene.h"

#include <stdexcept>
#include <utility>

#include "bridge/export_input.h"

namespace python {
namespace {

thread_local bool isImporting = false;

constexpr char kTool[] = "zkmocaputils " ZKMOCAP_VERSION;

}  // namespace

exporters::Options Scene::Complete(const exporters::Options& chosen,
                                   std::vector<exporters::SourceFile> files) const {
    if (!isFromArrays) {
        exporters::Options options =
            bridge::ExportOptionsOf(chosen, request, result, kTool, std::move(files));
        if (chosen.framesPerSecond) options.framesPerSecond = chosen.framesPerSecond;
        return options;
    }
    exporters::Options options = chosen;
    options.skeletons = skeletons;
    options.source.format = "arrays";
    options.source.tool = kTool;
    options.source.files = std::move(files);
    return options;
}

exporters::RunRecord Scene::Record() const {
    if (!isFromArrays) return bridge::RecordOf(request, result);
    const headless::Recording& recording = result.recording;
    exporters::RunRecord record{0, recording.log, recording.bar, recording.commands};
    record.userInput = "{}";
    return record;
}

ImportScope::ImportScope() {
    if (isImporting)
        throw std::runtime_error(
            "a take is being read on this thread; its progress callback"
            " cannot read or build another one");
    isImporting = true;
}

ImportScope::~ImportScope() {
    isImporting = false;
}

}  // namespace python
