// Builds what the exporters need from the result of an import.
// Part of the public surface of the library.
#pragma once

#include <string>
#include <vector>

#include "export/file_skeleton.h"
#include "export/json_record.h"
#include "export/options.h"
#include "take/import.h"
#include "take/request.h"
#include "text/api.h"

namespace bridge {

// Returns the skeletons of the files, one for each model.
ZKMOCAP_API std::vector<exporters::FileSkeleton> SkeletonsOf(const take::Result& result);

// Returns the options that the user chose, completed with the result of the import: the rate, the
// number of models, their skeletons, Result::multiplied and the source. `tool` is the name and the
// version of the program, and `files` are the files of the import.
ZKMOCAP_API exporters::Options ExportOptionsOf(const exporters::Options& chosen,
                                               const take::Request& request,
                                               const take::Result& result, std::string tool,
                                               std::vector<exporters::SourceFile> files = {});

// Returns the record of the run. It refers to `result`, which must outlive it.
ZKMOCAP_API exporters::RunRecord RecordOf(const take::Request& request, const take::Result& result);

}  // namespace bridge
