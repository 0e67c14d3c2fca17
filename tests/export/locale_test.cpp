// An export has the same bytes in every locale.
#include <gtest/gtest.h>

#include "tests/export/exported.h"
#include "tests/support/core/comma_locale.h"

namespace {

std::vector<std::string> ExportAll() {
    const exporters::Options options{.scale = 0.5, .framesPerSecond = 29.97};
    std::vector<std::string> exports;
    for (const char* extension : {".glb", ".gltf", ".fbx", ".bvh", ".csv", ".npz"})
        exports.push_back(exported::Export(extension, options));
    return exports;
}

TEST(ExportLocale, ChangesNothing) {
    ASSERT_TRUE(exported::Import(exported::Samples()[0]));
    const std::vector<std::string> plain = ExportAll();
    const support::CommaLocale comma;
    if (!comma.Problem().empty()) GTEST_SKIP() << comma.Problem();
    EXPECT_TRUE(ExportAll() == plain);
}

}  // namespace
