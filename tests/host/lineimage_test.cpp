#include <gmock/gmock.h>

#include "base/path.h"
#include "host/host_test.h"

namespace cephtool {
namespace {

using testing::HasSubstr;

class LineImages : public testing::Test {
 protected:
    LineImages() { folder_.add("dot.pgm", dot); }

    static std::string made(Arguments arguments, const std::string& output) {
        arguments.insert(arguments.begin(), {"lineimage", "-o", output});
        const host_test::Outcome outcome = host_test::run(arguments);
        return outcome.code == ExitCode::done ? host_test::bytes_of(path_from_utf8(output))
                                              : std::to_string(static_cast<int>(outcome.code)) + " " + outcome.err;
    }

    const std::string dot = "P5\n5 5\n255\n" + std::string(12, '\0') + "\xFF" + std::string(12, '\0');
    host_test::Folder folder_;
};

TEST_F(LineImages, TakeTheirStepsInOneOrder) {
    EXPECT_EQ(made({"dot.pgm"}, "same.pgm"), dot);
    EXPECT_NE(made({"dot.pgm", "--dilate", "1"}, "wide.pgm"), dot);
    EXPECT_NE(made({"dot.pgm", "--dilate", "1", "--connectivity", "4"}, "four.pgm"), made({"wide.pgm"}, "out.pgm"));
    made({"wide.pgm", "--erode", "1"}, "narrow.pgm");
    EXPECT_EQ(made({"--thin", "--erode", "1", "--dilate", "1", "dot.pgm"}, "out.pgm"),
              made({"narrow.pgm", "--thin"}, "thin.pgm"));
}

#ifdef TOOL_SURFACE_PICTURES
TEST_F(LineImages, BecomePicturesAndComeBack) {
    EXPECT_THAT(made({"dot.pgm"}, "dark.png"), HasSubstr("PNG"));
    EXPECT_EQ(made({"dark.png"}, "out.pgm"), dot);
    made({"dot.pgm", "--bright"}, "bright.png");
    EXPECT_EQ(made({"bright.png", "--bright", "--threshold", "255"}, "out.pgm"), dot);
    EXPECT_EQ(made({"bright.png"}, "dark.pgm"), made({"dark.png", "--bright"}, "bright.pgm"));  // all but the dot
}
#endif

TEST_F(LineImages, SayWhatIsWrongAndTheWayOut) {
    folder_.add("grey.pgm", "P5 2 2 255\n" + std::string("\0\0\xFF\x30", 4));
    folder_.add("cut.pgm", dot.substr(0, 20));
    folder_.add("text.png", "no picture");
    const std::pair<Arguments, const char*> rows[] = {
        {{"grey.pgm"}, "1 cephtool: grey.pgm: the pixel at x 1, y 1 is 48;"},
        {{"cut.pgm"}, "1 cephtool: cut.pgm: this is no line image, or a part of it is missing"},
        {{"text.png"}, "1 cephtool: text.png: "},
        {{"."}, "1 cephtool: .: this is a folder"},
        {{"none.jpg"}, "1 cephtool: none.jpg: there is no such file"},
        {{"dot.pgm", "--threshold", "9"}, "2 cephtool: --threshold is for pictures"},
        {{"text.png", "--threshold", "256"}, "no whole number from 1 to 255"},
        {{"dot.pgm", "--erode", "1.5"}, "no whole number from 0 to 1000"}};
    for (const auto& [arguments, says] : rows) EXPECT_THAT(made(arguments, "none.pgm"), HasSubstr(says));
    EXPECT_THAT(made({"dot.pgm"}, "a.gif"), HasSubstr("2 cephtool: \"a.gif\" does not end in .png or .pgm"));
    EXPECT_THAT(made({"dot.pgm"}, "gone/a.pgm"), HasSubstr("1 cephtool: gone/a.pgm could not be written"));
    EXPECT_EQ(made({"dot.pgm"}, "dót.pgm"), dot);
    EXPECT_THAT(made({"dót.pgm"}, "a.pgm"), HasSubstr("1 cephtool: dót.pgm: the name is outside code page 932"));
    EXPECT_FALSE(std::filesystem::exists("none.pgm"));
    EXPECT_EQ(host_test::bytes_of("dot.pgm"), dot);
}

}  // namespace
}  // namespace cephtool
