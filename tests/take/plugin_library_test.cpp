#include "take/plugin_library.h"

#include <gmock/gmock.h>

#include "tests/support/temporary_folder.h"

namespace {

using testing::HasSubstr;

std::string MessageOf(const std::string& path) {
    const take::LoadedPlugin loaded = take::LoadPlugin(path);
    EXPECT_EQ(loaded.plugin.has_value(), loaded.problem.empty());
    return loaded.problem;
}

TEST(PluginLibrary, IsLookedForInTheProgramsFolderAndInItsTree) {
    const std::vector<std::string> candidates = take::PluginCandidates("/opt/zk/bin");
    ASSERT_EQ(candidates.size(), 3u);
    EXPECT_EQ(candidates[0], "/opt/zk/bin/libzkmocaputils.so");
    EXPECT_EQ(candidates[1], "/opt/zk/bin/../lib/libzkmocaputils.so");
    EXPECT_THAT(candidates[2], HasSubstr("/opt/zk/bin/../"));
}

TEST(PluginLibrary, SaysWhyItCannotBeLoaded) {
    const support::TemporaryFolder folder;
    folder.Write("text.so", "text");
    EXPECT_THAT(MessageOf(folder.Path("none.so")), HasSubstr("No such file"));
    EXPECT_THAT(MessageOf(folder.Path("text.so")), HasSubstr("cannot load the plug-in"));
}

TEST(PluginLibrary, MustExportTheCallback) {
    // The C library's mathematical functions are a library that exists but is not a plug-in.
    EXPECT_THAT(MessageOf("/lib/x86_64-linux-gnu/libm.so.6"),
                testing::AnyOf(HasSubstr("lacks ZelkOnCommand"), HasSubstr("No such file")));
}

TEST(PluginLibrary, IsLoadedByItsPath) {
    const take::LoadedPlugin loaded = take::LoadPlugin(ZKMOCAP_PLUGIN);
    ASSERT_TRUE(loaded.plugin) << loaded.problem;
    EXPECT_NE(loaded.plugin->Call(L"no such command", nullptr), 0);
}

}  // namespace
