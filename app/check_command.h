#pragma once

#include "app/check_request.h"

namespace app {

// Surveys the files and prints what is found and what they hold; with --fix writes their canonical
// texts. Returns the exit status.
int RunCheck(const CheckRequest& request);

}  // namespace app
