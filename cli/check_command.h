#pragma once

#include "cli/check_request.h"

namespace cli {

// Surveys the files and prints their findings and what they contain; with --fix writes their mended
// texts. Returns the exit status.
int RunCheck(const CheckRequest& request);

}  // namespace cli
