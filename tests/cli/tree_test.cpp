#include "cli/tree.h"

#include <gmock/gmock.h>
#include <sstream>

#include "cli/columns.h"
#include "cli/locale_setup.h"
#include "tests/support/test_scene.h"
#include "text/wide_text.h"

namespace {

using testing::ElementsAre;

std::vector<std::string> Lines(const exporters::Options& options = {}) {
    std::string text;
    cli::PrintTree(TestScene::Get(), options, [&](std::string_view more) { text += more; });
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

TEST(Tree, ShowsPositionsAsOutputsHaveThem) {
    const TestScene scene;
    scene.AddNull(scene.AddModel(L"walk"), L"Hips", 1, 2, 3);
    struct Row {
        double scale;
        exporters::UpAxis up;
        const char* end;
    };
    const Row rows[] = {{1, exporters::UpAxis::Y, "    1.000     2.000     3.000"},
                        {0.5, exporters::UpAxis::Y, "    0.500     1.000     1.500"},
                        {1, exporters::UpAxis::Z, "    1.000     3.000    -2.000"},
                        {1, exporters::UpAxis::X, "   -2.000     1.000     3.000"},
                        {10, exporters::UpAxis::Z, "   10.000    30.000   -20.000"}};
    for (const Row& row : rows)
        EXPECT_THAT(Lines({.scale = row.scale, .up = row.up}).back(), testing::EndsWith(row.end));
}

TEST(Tree, ShowsNamesTypesAndGlobalPositions) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    Zelk::Null hips = scene.AddNull(model, L"Hips", 0, 90.5, -0.0001);
    scene.AddNull(hips, L"Chest", 0, 10, -2);
    scene.AddNull(model, L"Other", 1e6, 0, -1e200);
    EXPECT_THAT(
        Lines(),
        ElementsAre(
            "Name                                Type                  x         y         z",
            "walk                                Model             0.000     0.000     0.000",
            "  Hips                              Null              0.000    90.500     0.000",
            "    Chest                           Null              0.000   100.500    -2.000",
            "  Other                             Null            1.0e+06     0.000 -1.0e+200"));
}

TEST(Tree, ShowsChains) {
    const TestScene scene;
    scene.AddChain(scene.AddModel(L"walk"), L"LegRoot");
    std::vector<std::string> types;
    for (const std::string& line : Lines())
        types.push_back(line.substr(36, 13));
    EXPECT_THAT(types, testing::IsSupersetOf({"ChainRoot    ", "ChainBone    ", "ChainEffector"}));
}

TEST(Tree, FitsEightyColumnsWhateverTheNames) {
    cli::SetCharacterLocale();
    const TestScene scene;
    Zelk3DObject parent = scene.AddModel(std::wstring(300, L'm').c_str());
    for (int depth = 0; depth < 200; ++depth)
        parent = scene.AddNull(parent, std::wstring(40, L'\x6B69').c_str(), -1e300, -1e300, -1e300);
    scene.AddNull(parent, L"\x1B[2J\n", 0, 0, 0);
    for (const std::string& line : Lines()) {
        const std::wstring text = text::DecodeUtf8(line);
        EXPECT_EQ(cli::DisplayWidth(text), 79) << line;
        EXPECT_EQ(line.find('\x1B'), std::string::npos);
    }
}

TEST(Tree, PrintsTheDepthWhereItIsNotIndentedFurther) {
    const TestScene scene;
    Zelk3DObject parent = scene.AddModel(L"deep");
    for (int depth = 0; depth < 12; ++depth)
        parent = scene.AddNull(parent, L"n", 0, 0, 0);
    const std::vector<std::string> lines = Lines();
    EXPECT_THAT(lines[11], testing::StartsWith("                    n9 "));
    EXPECT_THAT(lines[12], testing::StartsWith("                    (11) n10 "));
}

TEST(Tree, StaysLinearInDepth) {
    const TestScene scene;
    Zelk3DObject parent = scene.AddModel(L"deep");
    for (int depth = 0; depth < 100'000; ++depth)
        parent = scene.AddNull(parent, L"n", 0, 1, 0);
    const std::vector<std::string> lines = Lines();
    ASSERT_EQ(lines.size(), 100'002u);
    EXPECT_THAT(lines.back(), testing::HasSubstr("(100000)"));
    EXPECT_THAT(lines.back(), testing::HasSubstr("1.0e+05"));
}

}  // namespace
