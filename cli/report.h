#pragma once

#include "cli/arguments.h"
#include "dataset/import_report.h"
#include "take/import.h"

namespace cli {

// Returns the report for "zkhost convert", which started this process. The caller has to set the
// report's `outputs`, `loadMilliseconds` and `diskIsFull`.
dataset::ImportReport ReportOf(const take::Request& request, const take::Result& result);

}  // namespace cli
