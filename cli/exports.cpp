#include "cli/exports.h"

#include <utility>

#include "bridge/export_input.h"

namespace cli {

exporters::Options ExportOptionsOf(const ImportRequest& request, const take::Result& result,
                                   std::vector<exporters::SourceFile> sources) {
    return bridge::ExportOptionsOf(request.exports, request.take, result, "zkhost " ZKHOST_VERSION,
                                   std::move(sources));
}

exporters::RunRecord RecordOf(const ImportRequest& request, const take::Result& result) {
    return bridge::RecordOf(request.take, result);
}

}  // namespace cli
