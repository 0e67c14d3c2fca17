#pragma once

#include "cli/check_request.h"

namespace cli {

// Surveys the files and prints their findings and what they contain. With --fix, also writes their
// mended texts. Returns the exit status.
int RunCheck(const CheckRequest& request);

}  // namespace cli
