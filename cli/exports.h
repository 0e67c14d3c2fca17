// Builds the options and the run record that the exporters need.
#pragma once

#include <vector>

#include "cli/arguments.h"
#include "export/json_record.h"
#include "export/options.h"
#include "take/import.h"

namespace cli {

// Returns the user's options, completed with the result of the import: the rate, the number of
// models, their skeletons and the source, of which `sources` are the files. `enlarged` is
// Result::multiplied.
exporters::Options ExportOptionsOf(const ImportRequest& request, const take::Result& result,
                                   std::vector<exporters::SourceFile> sources = {});

// Returns the record of the run. It refers to `result`, which must outlive it.
exporters::RunRecord RecordOf(const ImportRequest& request, const take::Result& result);

}  // namespace cli
