// The bytes of binary FBX: nodes, properties, arrays, the footer.
#include "export/fbx_node.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>

#include "export/number_deflate.h"
#include "export/options.h"
#include "tests/export/fbx_file.h"

namespace fbx_node_test {

using namespace std::string_view_literals;
using exported::FbxFileReader;
using exported::FbxRecord;
using exporters::FbxArray;
using exporters::FbxArrayType;
using exporters::FbxFile;
using exporters::FbxNode;
using testing::ElementsAreArray;
using testing::HasSubstr;

// Adds what FbxFileReader expects in every file.
void AddObjects(FbxFile& file) {
    file.Add("Objects").CloseList();
    file.Add("Connections").CloseList();
}

std::string Written(FbxFile& file) {
    text::StringSink sink;
    file.Write(sink, {});
    return sink.Bytes();
}

TEST(FbxNode, HoldsPropertiesOfEachType) {
    FbxFile file;
    FbxNode& node = file.Add("All").Bool(true).Int(-2).Long(1LL << 40).Double(0.1);
    node.Text("caf\xC3\xA9").Bytes("\0\xFF\1"sv).Add("Below").Text("");
    AddObjects(file);
    const FbxFileReader read(Written(file));
    const FbxRecord& all = read["All"];
    EXPECT_TRUE(all.Get<bool>(0));
    EXPECT_EQ(all.Get<std::int32_t>(1), -2);
    EXPECT_EQ(all.Get<std::int64_t>(2), 1LL << 40);
    EXPECT_EQ(all.Get<double>(3), 0.1);
    EXPECT_EQ(all.Get<std::string>(4), "caf\xC3\xA9");
    EXPECT_EQ(all.Get<std::string>(5), "\0\xFF\1"sv);
    EXPECT_EQ(all["Below"].Get<std::string>(), "");
}

TEST(FbxNode, HasTheBytesOfTheFormat) {
    FbxFile file;
    file.Add("A").Int(0x01020304).Add("B");
    // A begins after the 27 bytes of the header. It has 26 bytes with its name, 5 of its property,
    // 26 of the node B, and 25 that end its list.
    constexpr std::string_view kExpected =
        "Kaydara FBX Binary  \0\x1A\0\x4C\x1D\0\0"
        "\x6D\0\0\0\0\0\0\0\1\0\0\0\0\0\0\0\5\0\0\0\0\0\0\0\1AI\4\3\2\1"
        "\x54\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1B"
        "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"sv;
    EXPECT_EQ(Written(file).substr(0, kExpected.size()), kExpected);
}

TEST(FbxNode, EndsWithAListOnlyIfItHasNodesOrIsClosed) {
    FbxFile file;
    file.Add("Plain").Int(1);
    file.Add("Closed").Int(1).CloseList();
    file.Add("Owner").Add("Child");
    AddObjects(file);
    const FbxFileReader read(Written(file));
    EXPECT_FALSE(read["Plain"].hasList);
    EXPECT_TRUE(read["Closed"].hasList);
    EXPECT_TRUE(read["Owner"].hasList);
    EXPECT_FALSE(read["Owner"]["Child"].hasList);
}

TEST(FbxNode, HoldsArraysOfEachType) {
    const std::vector<std::int32_t> ints = {-1, std::numeric_limits<std::int32_t>::max()};
    const std::vector<std::int64_t> longs = {0, std::numeric_limits<std::int64_t>::min()};
    const std::vector<float> floats = {0.1F, -0.0F};
    std::vector<double> rising(1000);
    std::iota(rising.begin(), rising.end(), -3.0);
    const std::vector<double> doubles = rising;
    const std::string deflated = exporters::DeflateNumbers(
        {reinterpret_cast<const char*>(longs.data()), 2 * sizeof(std::int64_t)});
    FbxFile file;
    file.Add("Ints").Numbers(std::span(ints));
    file.Add("Longs").Array(exporters::DeflatedArray<std::int64_t>(2, deflated));
    file.Add("Floats").Array(exporters::PlainArray(std::span(floats)));
    file.Add("Doubles").Numbers(std::span(doubles));
    file.Add("None").Numbers(std::span<const float>());
    AddObjects(file);
    const FbxFileReader read(Written(file));
    EXPECT_EQ(read["Ints"].Get<std::vector<std::int32_t>>(), ints);
    EXPECT_EQ(read["Longs"].Get<std::vector<std::int64_t>>(), longs);
    EXPECT_EQ(read["Floats"].Get<std::vector<float>>(), floats);
    EXPECT_EQ(read["Doubles"].Get<std::vector<double>>(), doubles);
    EXPECT_TRUE(read["None"].Get<std::vector<float>>().empty());
    // Long arrays are compressed, short ones are not.
    EXPECT_LT(read["Doubles"].bytes.size(), sizeof(double) * doubles.size());
    EXPECT_EQ(read["Ints"].bytes.size(), 13 + sizeof(std::int32_t) * ints.size());
}

struct TooLarge {
    const char* name;
    FbxArray array;
};

class FbxArrays : public testing::TestWithParam<TooLarge> {};

// The bytes of these arrays are never read.
TEST_P(FbxArrays, AreRefusedFrom4GiBOn) {
    FbxNode node("Array");
    try {
        node.Array(GetParam().array);
        ADD_FAILURE() << "was accepted";
    } catch (const exporters::ExportError& error) {
        EXPECT_THAT(error.what(), HasSubstr("4 GiB"));
    }
}

constexpr std::size_t k4GiB = std::size_t{1} << 32U;
constexpr char kByte = 0;
const TooLarge kTooLarge[] = {
    {"Numbers", {FbxArrayType::Int64, k4GiB, {&kByte, 1}, true}},
    {"Bytes", {FbxArrayType::Float, k4GiB / 4, {&kByte, k4GiB}}},
    {"DeflatedBytes", {FbxArrayType::Double, 1, {&kByte, k4GiB}, true}},
};
INSTANTIATE_TEST_SUITE_P(, FbxArrays, testing::ValuesIn(kTooLarge),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FbxNode, TakesArraysBelow4GiB) {
    FbxNode node("Array");
    EXPECT_NO_THROW(node.Array({FbxArrayType::Float, k4GiB / 4 - 1, {&kByte, k4GiB - 4}}));
}

// The footer begins with zero bytes up to a multiple of 16. FbxFileReader checks it.
TEST(FbxFile, HasACompleteFooterAtEveryLength) {
    for (std::size_t length = 0; length < 32; ++length) {
        FbxFile file;
        file.AddIdentity(std::string(length, 'x'));
        AddObjects(file);
        const std::string bytes = Written(file);
        EXPECT_EQ(bytes.size() % 16, 0) << length;
        const FbxFileReader read(bytes);
        EXPECT_EQ(read["Creator"].Get<std::string>().size(), length);
        EXPECT_EQ(read["FileId"].Get<std::string>().size(), 16);
    }
}

TEST(FbxFile, PassesLargeArraysToTheSinkInOrder) {
    std::vector<float> many(100'000);
    std::iota(many.begin(), many.end(), 0.0F);
    FbxFile file;
    file.Add("First").Int(1);
    file.Add("Many").Array(exporters::PlainArray(std::span<const float>(many)));
    file.Add("Last").Int(2);
    AddObjects(file);
    const FbxFileReader read(Written(file));
    EXPECT_THAT(read["Many"].Get<std::vector<float>>(), ElementsAreArray(many));
    EXPECT_EQ(read["Last"].Get<std::int32_t>(), 2);
}

}  // namespace fbx_node_test
