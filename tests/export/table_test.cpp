// The text of exported .csv files. The .npz files are tested with numpy (check_tables.py).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/csv_names.h"
#include "tests/export/exported.h"
#include "text/byte_sink.h"

namespace table_test {

using testing::HasSubstr;
using testing::StartsWith;

std::string Take(const std::string& name, const std::string& rows, int frames) {
    return "HIERARCHY\nROOT " + name +
           "\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Xrotation Yrotation "
           "Zrotation\nEnd Site\n{\nOFFSET 0 10 0\n}\n}\nMOTION\nFrames: " +
           std::to_string(frames) + "\nFrame Time: 0.25\n" + rows;
}

TEST(Csv, HoldsOneRowForEachFrame) {
    ASSERT_TRUE(exported::ImportText(Take("Hips", "1 2 3 0 0 0\n1.5 2 3 0 0 90\n", 2)));
    EXPECT_EQ(exported::Export(".csv"),
              "frame,seconds,Hips_px,Hips_py,Hips_pz,Hips_rx,Hips_ry,Hips_rz,"
              "Hips_End_px,Hips_End_py,Hips_End_pz,Hips_End_rx,Hips_End_ry,Hips_End_rz\n"
              "1,0,1,2,3,0,0,0,1,12,3,0,0,0\n"
              "2,0.25,1.5,2,3,0,0,90,-8.5,2,3,0,0,90\n");
}

TEST(Csv, ReplacesCharactersThatReadersWouldChange) {
    ASSERT_TRUE(exported::ImportText(Take("a,\"b\"", "0 0 0 0 0 0\n", 1)));
    EXPECT_THAT(exported::Export(".csv"), StartsWith("frame,seconds,a__b__px,"));
}

// Three joints whose plain names are the same.
constexpr const char* kClashes =
    "HIERARCHY\nROOT a:b\n{\nOFFSET 0 0 0\nCHANNELS 0\nJOINT a.b\n{\nOFFSET 0 1 0\nCHANNELS 1 "
    "Xrotation\nJOINT a_b\n{\nOFFSET 0 1 0\nCHANNELS 0\nEnd Site\n{\nOFFSET 0 1 "
    "0\n}\n}\n}\n}\nMOTION\nFrames: 1\nFrame Time: 0.25\n0\n";

TEST(Csv, NumbersNamesThatWouldBeTheSame) {
    ASSERT_TRUE(exported::ImportText(kClashes));
    const std::string text = exported::Export(".csv");
    EXPECT_THAT(text, StartsWith("frame,seconds,a_b_px,"));
    EXPECT_THAT(text, HasSubstr("a_b_rz,a_b_2_px,"));
    EXPECT_THAT(text, HasSubstr("a_b_2_rz,a_b_3_px,"));
}

TEST(Csv, NamesTheModelIfThereAreSeveral) {
    ASSERT_TRUE(exported::ImportText(Take("Hips", "1 0 0 0 0 0\n2 0 0 0 0 0\n", 2) +
                                     Take("Hips", "7 0 0 0 0 0\n", 1)));
    const std::string text = exported::Export(".csv");
    EXPECT_THAT(text, HasSubstr(",take_Hips_px,"));
    EXPECT_THAT(text, HasSubstr(",take1_Hips_px,"));
    // After its end the shorter motion keeps its last frame.
    EXPECT_THAT(text, HasSubstr("\n2,0.25,2,0,0,0,0,0,2,10,0,0,0,0,7,0,0,"));
}

// The second model has twice the rate, but the samples of both are at the same times.
TEST(Csv, SamplesModelsOfDifferentRatesAtTheSameTimes) {
    std::string fast = Take("Hips", "0 0 0 0 0 0\n1 0 0 0 0 0\n2 0 0 0 0 0\n", 3);
    fast.replace(fast.find("0.25"), 4, "0.125");
    ASSERT_TRUE(exported::ImportText(Take("Hips", "0 0 0 0 0 0\n1 0 0 0 0 0\n", 2) + fast));
    EXPECT_THROW(exported::Export(".csv"), exporters::ExportError);
    const std::string text = exported::Export(".csv", {.resampleTo = 16.0});
    EXPECT_THAT(text, HasSubstr("\n1,0,0,0,0,0,0,0,0,10,0,0,0,0,0,0,0,"));
    EXPECT_THAT(text, HasSubstr("\n2,0.0625,0.25,0,0,0,0,0,0.25,10,0,0,0,0,0.5,0,"));
    EXPECT_THAT(text, HasSubstr("\n5,0.25,1,0,0,0,0,0,1,10,0,0,0,0,2,0,"));
}

TEST(Csv, ListsTheTrueNamesInASecondTable) {
    ASSERT_TRUE(exported::ImportText(kClashes));
    text::StringSink out;
    EXPECT_EQ(exporters::WriteCsvNames(out, exported::CurrentScene(), {}), "");
    EXPECT_EQ(out.Bytes(),
              "joint,column,parent,end_site\n"
              "a:b,a_b,,0\n"
              "a.b,a_b_2,a_b,0\n"
              "a_b,a_b_3,a_b_2,0\n"
              "a_b_End,a_b_End,a_b_3,1\n");
}

}  // namespace table_test
