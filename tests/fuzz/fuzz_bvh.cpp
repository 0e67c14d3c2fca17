#include "tests/fuzz/bvh_check.h"
#include "tests/fuzz/target.h"

const fuzz::Target fuzz::kTarget = {CheckBvh, 1, [](std::string_view) { return Grammar::Bvh; }};
