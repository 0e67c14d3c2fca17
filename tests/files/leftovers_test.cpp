#include "files/leftovers.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>
#include <unistd.h>

#include "files/output_file.h"
#include "tests/support/temporary_folder.h"
#include "text/byte_sink.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

TEST(Leftovers, AreRemovedWhenTheirWriterHasEnded) {
    const support::TemporaryFolder folder;
    folder.Write(".zkhost-123-0.tmp", "half");
    folder.Write(".zkhost-convert", "kept");
    folder.Write("walk.glb", "kept");
    files::RemoveLeftovers({folder.Path("")});
    EXPECT_THAT(folder.Names(), ElementsAre(".zkhost-convert", "walk.glb"));
}

TEST(Leftovers, OfAProcessAreFoundByTheirNames) {
    const support::TemporaryFolder folder;
    for (const std::string& name : files::UsualTemporaryNames(123))
        folder.Write(name, "half");
    folder.Write(".zkhost-1234-0.tmp", "kept");
    folder.Write(".zkhost-convert", "kept");
    files::RemoveLeftoversOf(123, folder.Path());
    EXPECT_THAT(folder.Names(), ElementsAre(".zkhost-1234-0.tmp", ".zkhost-convert"));
}

TEST(Leftovers, OfAProcessAreKeptWhileTheyAreWritten) {
    const support::TemporaryFolder folder;
    files::OutputFile first(folder.Path("walk.gltf"));
    files::OutputFile second(folder.Path("walk.bin"));
    const auto names = folder.Names();
    EXPECT_THAT(files::UsualTemporaryNames(getpid()), IsSupersetOf(names));
    files::RemoveLeftoversOf(getpid(), folder.Path());
    EXPECT_EQ(folder.Names(), names);
}

TEST(Leftovers, AreKeptWhileTheyAreWritten) {
    const support::TemporaryFolder folder;
    {
        files::OutputFile file(folder.Path("walk.glb"));
        files::RemoveLeftovers({folder.Path("")});
        EXPECT_THAT(folder.Names(), SizeIs(1));
        file.Write("whole");
        file.Commit();
    }
    EXPECT_THAT(folder.Names(), ElementsAre("walk.glb"));
    EXPECT_EQ(folder.Read("walk.glb"), "whole");
}

TEST(Leftovers, AreNotFilesThatWereJustCreated) {
    const support::TemporaryFolder folder;
    std::atomic<bool> done = false;
    std::thread remover([&] {
        while (!done)
            files::RemoveLeftovers({folder.Path("")});
    });
    std::vector<std::string> lost;
    for (int round = 0; round < 300; ++round) {
        try {
            files::OutputFile file(folder.Path("walk.glb"));
            file.Commit();
        } catch (const text::WriteError& error) {
            lost.emplace_back(error.what());
        }
    }
    done = true;
    remover.join();
    EXPECT_THAT(lost, IsEmpty());
}

TEST(Leftovers, AreIgnoredIfTheFolderDoesNotExist) {
    const support::TemporaryFolder folder;
    files::RemoveLeftovers({folder.Path("none")});
    EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
