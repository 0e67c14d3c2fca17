#include "cli/outputs.h"

#include <gmock/gmock.h>

namespace {

struct Cancelled {
    const char* name;
    std::vector<std::string> kept;
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const Cancelled& row) {
    return out << row.name;
}

class CancelledMessage : public testing::TestWithParam<Cancelled> {};

TEST_P(CancelledMessage, SaysWhatWasKept) {
    EXPECT_EQ(cli::CancelledMessage("a/walk.glb", GetParam().kept), GetParam().message);
}

const Cancelled kCancelled[] = {
    {"Nothing", {}, "cancelled while writing a/walk.glb; no output was written"},
    {"One", {"walk.npz"}, "cancelled while writing a/walk.glb; walk.npz was kept"},
    {"Two",
     {"walk.gltf", "walk.bin"},
     "cancelled while writing a/walk.glb; walk.gltf and walk.bin were kept"},
    {"Three",
     {"a.csv", "b.csv", "c.csv"},
     "cancelled while writing a/walk.glb; a.csv, b.csv and c.csv were kept"},
};
INSTANTIATE_TEST_SUITE_P(, CancelledMessage, testing::ValuesIn(kCancelled),
                         [](const auto& row) { return row.param.name; });

}  // namespace
