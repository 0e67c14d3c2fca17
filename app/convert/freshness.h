#pragma once

#include <string>

#include "app/convert/jobs.h"

namespace app {

// Whether all files of the job's output are there and newer than all of its inputs. (A file that is
// there is whole: outputs get their names last.)
bool IsUpToDate(const Job& job, const std::string& outDir);

}  // namespace app
