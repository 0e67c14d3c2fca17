#include <gmock/gmock.h>

#include "files/system_storage.h"
#include "take/import.h"

namespace {

TEST(LinkedPlugin, ImportsWithoutAFileOfItsOwn) {
    const take::LoadedPlugin loaded = take::LoadPlugin();
    ASSERT_TRUE(loaded.plugin) << loaded.problem;
    take::Request request;
    request.file.path = ZKMOCAP_EXAMPLES_DIR "/walk.bvh";
    files::SystemStorage storage;
    const take::Result result = take::Import(*loaded.plugin, request, storage);
    EXPECT_TRUE(result.IsImported()) << result.FirstError();
    EXPECT_EQ(result.Scene().Models().size(), 1U);
}

TEST(LinkedPlugin, IsTheOnlyOne) {
    const take::LoadedPlugin loaded = take::LoadPlugin("/nonexistent/plugin.so");
    EXPECT_FALSE(loaded.plugin);
    EXPECT_THAT(loaded.problem, testing::HasSubstr("has one linked in"));
}

}  // namespace
