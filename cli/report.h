#pragma once

#include "cli/arguments.h"
#include "dataset/import_report.h"
#include "take/import.h"

namespace cli {

// What the import brought, for the process that started this one; whether an output was written is
// for the caller to add.
dataset::ImportReport ReportOf(const take::Request& request, const take::Result& result);

}  // namespace cli
