// What the plug-in exports and what it needs, as the tools nm and readelf show it.
#include <array>
#include <cstdio>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <sstream>
#include <string>

#include "host/variant.h"
#include "plugin/contract.h"
#include "plugin/user_input.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct PipeCloser {
    void operator()(std::FILE* pipe) const { EXPECT_EQ(pclose(pipe), 0); }
};

std::string OutputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, PipeCloser> pipe(popen(command.c_str(), "r"));
    if (!pipe) return {};
    std::string output;
    std::array<char, 4096> piece;
    for (std::size_t count = 0;
         (count = std::fread(piece.data(), 1, piece.size(), pipe.get())) > 0;)
        output.append(piece.data(), count);
    return output;
}

// The last word of each line.
std::set<std::string> LastWords(const std::string& text) {
    std::set<std::string> words;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty()) words.insert(line.substr(line.rfind(' ') + 1));
    return words;
}

TEST(PluginLibrary, ExportsTwoNames) {
    const std::string defined = OutputOf("nm -D --defined-only '" ZKMOCAP_PLUGIN "'");
    EXPECT_THAT(LastWords(defined), ElementsAre("ZelkOnCommand", "g_UserInput"));
    EXPECT_THAT(defined, HasSubstr(" T ZelkOnCommand"));
    EXPECT_THAT(defined, HasSubstr(" B g_UserInput"));
}

// Only the arguments are constructed when the library is loaded.
TEST(PluginLibrary, MakesTheArgumentsAloneWhenLoaded) {
    std::set<std::string> initialisers;
    for (const std::string& name : LastWords(OutputOf("nm '" ZKMOCAP_PLUGIN "'")))
        if (name.starts_with("_GLOBAL__sub_I_")) initialisers.insert(name);
    EXPECT_THAT(initialisers, ElementsAre("_GLOBAL__sub_I_user_input.cpp"));
}

TEST(PluginLibrary, NeedsTheHostAndTheStandardLibraryAlone) {
    // The C library has two libraries for mathematics; libmvec has the vector functions.
    const std::set<std::string> allowed = {"[libzelkhost.so.0]", "[libstdc++.so.6]", "[libm.so.6]",
                                           "[libmvec.so.1]",     "[libgcc_s.so.1]",  "[libc.so.6]"};
    // A build with sanitizers, which nobody installs, needs these as well.
    const auto isSanitizer = [](const std::string& name) {
        return name.starts_with("[libasan") || name.starts_with("[libubsan");
    };
    std::istringstream lines(OutputOf("readelf -d '" ZKMOCAP_PLUGIN "'"));
    std::set<std::string> needed;
    for (std::string line; std::getline(lines, line);)
        if (line.find("(NEEDED)") != std::string::npos) needed.insert(line.substr(line.rfind('[')));
    EXPECT_EQ(needed.count("[libzelkhost.so.0]"), 1u);
    for (const std::string& library : needed)
        EXPECT_TRUE(allowed.count(library) == 1 || isSanitizer(library)) << library;
}

// Another host provides only what host/ declares.
TEST(PluginLibrary, UsesOnlyTheDeclaredHost) {
    const std::string undefined = OutputOf("nm -D -C --undefined-only '" ZKMOCAP_PLUGIN "'");
    EXPECT_THAT(undefined, HasSubstr("Zelk::Application::ExecuteCommand"));
    EXPECT_THAT(undefined, testing::Not(HasSubstr("headless")));
}

TEST(PluginLibrary, LoadsAndUnloadsAgainAndAgain) {
    for (int round = 0; round < 3; ++round) {
        void* const library = dlopen(ZKMOCAP_PLUGIN, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << dlerror();
        const auto* const input =
            static_cast<const USERINPUT*>(dlsym(library, plugin::kUserInputSymbol));
        const auto callback =
            reinterpret_cast<plugin::Callback>(dlsym(library, plugin::kCallbackSymbol));
        ASSERT_NE(input, nullptr);
        ASSERT_NE(callback, nullptr);
        // The arguments are constructed anew in each round.
        EXPECT_TRUE(input->strBVHFile.IsEmpty());
        EXPECT_TRUE(input->strASFFile.IsEmpty());
        EXPECT_TRUE(input->strAMCFile.IsEmpty());
        EXPECT_FALSE(input->bAddClip || input->bUseNulls || input->bChainFromParentJoint ||
                     input->bEffectorToLastBone || input->bCreateGroup || input->bApplyLimits ||
                     input->bOverrideLength);
        EXPECT_EQ(input->dLengthMultiplier, 0.0);

        VARIANT arguments[plugin::biovision::kArgumentCount] = {};
        arguments[plugin::biovision::kFile].bstrVal = L"/nonexistent/walk.bvh";
        EXPECT_EQ(callback(plugin::kBiovisionCommand, arguments), 0);
        EXPECT_FALSE(input->strBVHFile.IsEmpty());
        EXPECT_EQ(dlclose(library), 0);
        EXPECT_EQ(dlopen(ZKMOCAP_PLUGIN, RTLD_NOW | RTLD_NOLOAD), nullptr);
    }
}

}  // namespace
