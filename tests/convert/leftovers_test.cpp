#include "app/convert/leftovers.h"

#include <atomic>
#include <gmock/gmock.h>
#include <thread>

#include "app/output_file.h"
#include "tests/app/temporary_folder.h"

namespace {

using testing::ElementsAre;
using testing::SizeIs;

TEST(Leftovers, GoWhereTheirWriterIsGone) {
    const TemporaryFolder folder;
    folder.Put(".zkhost-123-0.tmp", "half");
    folder.Put(".zkhost-convert", "kept");
    folder.Put("walk.glb", "kept");
    app::RemoveLeftovers({folder.Path("")});
    EXPECT_THAT(folder.Names(), ElementsAre(".zkhost-convert", "walk.glb"));
}

TEST(Leftovers, StayWhileTheyAreWritten) {
    const TemporaryFolder folder;
    {
        app::OutputFile file(folder.Path("walk.glb"));
        app::RemoveLeftovers({folder.Path("")});
        EXPECT_THAT(folder.Names(), SizeIs(1));
        file.Write("whole");
        file.Commit();
    }
    EXPECT_THAT(folder.Names(), ElementsAre("walk.glb"));
    EXPECT_EQ(folder.Get("walk.glb"), "whole");
}

TEST(Leftovers, AreToldFromFilesThatAreJustBegun) {
    const TemporaryFolder folder;
    std::atomic<bool> done = false;
    std::thread remover([&] {
        while (!done)
            app::RemoveLeftovers({folder.Path("")});
    });
    int lost = 0;
    for (int round = 0; round < 300; ++round) {
        try {
            app::OutputFile file(folder.Path("walk.glb"));
            file.Commit();
        } catch (const app::OutputError&) {
            ++lost;
        }
    }
    done = true;
    remover.join();
    EXPECT_EQ(lost, 0);
}

TEST(Leftovers, MayBeInNoFolder) {
    const TemporaryFolder folder;
    app::RemoveLeftovers({folder.Path("none")});
    EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
