// The text of exported .csv files. The .npz files are tested with numpy (check_tables.py).
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/export/exported.h"

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
              "frame,seconds,Hips.px,Hips.py,Hips.pz,Hips.rx,Hips.ry,Hips.rz,"
              "Hips_End.px,Hips_End.py,Hips_End.pz,Hips_End.rx,Hips_End.ry,Hips_End.rz\n"
              "1,0,1,2,3,0,0,0,1,12,3,0,0,0\n"
              "2,0.25,1.5,2,3,0,0,90,-8.5,2,3,0,0,90\n");
}

TEST(Csv, QuotesSeparatorsInNames) {
    ASSERT_TRUE(exported::ImportText(Take("a,\"b\"", "0 0 0 0 0 0\n", 1)));
    EXPECT_THAT(exported::Export(".csv"), StartsWith("frame,seconds,\"a,\"\"b\"\".px\","));
}

TEST(Csv, NamesTheModelIfThereAreSeveral) {
    ASSERT_TRUE(exported::ImportText(Take("Hips", "1 0 0 0 0 0\n2 0 0 0 0 0\n", 2) +
                                     Take("Hips", "7 0 0 0 0 0\n", 1)));
    const std::string text = exported::Export(".csv");
    EXPECT_THAT(text, HasSubstr(",take.Hips.px,"));
    EXPECT_THAT(text, HasSubstr(",take1.Hips.px,"));
    // After its end the shorter motion keeps its last frame.
    EXPECT_THAT(text, HasSubstr("\n2,0.25,2,0,0,0,0,0,2,10,0,0,0,0,7,0,0,"));
}

}  // namespace table_test
