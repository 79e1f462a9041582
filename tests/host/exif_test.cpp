#include <gmock/gmock.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "base/columns.h"
#include "base/wording.h"
#include "host/host_test.h"
#include "host/progress.h"

namespace cephtool {
namespace {

using host_test::bytes_of;
using host_test::Outcome;
using host_test::run;
using testing::HasSubstr;

const std::filesystem::path pictures = EXIF_PICTURES;

Outcome exif(Arguments arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), "exif");
    return run(arguments, input);
}

std::string picture(const char* name) {
    return (pictures / name).string();
}

// A JPEG header with this text as its comment.
std::string with_comment(const std::string& text) {
    const auto size = text.size() + 2;
    return "\xFF\xD8\xFF\xFE" + std::string{static_cast<char>(size >> 8), static_cast<char>(size)} + text +
           std::string("\xFF\xDA\0\2", 4);
}

TEST(ExifCommand, ShowsWhatAPictureTells) {
    const Outcome one = exif({picture("camera_intel.jpg"), picture("apex.jpg"), picture("comments.jpg")});
    EXPECT_EQ(one.code, ExitCode::done) << one.err;
    for (const char* line :
         {"  Picture       48 x 32 pixels, three colours, baseline\n",
          "  Camera        Example Optics, EX-1 \"Clinic\"\n", "  Taken         2024-02-29 13:45:07\n",
          "  Exposure      1/125 s\n", "  Aperture      f/5.6\n", "  Correction    -0.67 EV\n",
          "  Program       aperture priority\n", "  Metering      pattern\n", "  Light         flash\n",
          "  Flash         fired\n", "  Focal length  60 mm, as 96 mm on 35 mm film\n",
          "  Sensor        22.6 mm wide\n", "  Distance      1.25 m\n",
          "  Orientation   to be turned by 90° to the right\n",
          "  Comment       first line second line\n  EXIF          none\n"})
        EXPECT_THAT(one.out, HasSubstr(line));
    EXPECT_THAT(exif({picture("progressive.jpg")}).out, HasSubstr("  Distance      infinite\n"));
}

TEST(ExifCommand, GivesProgramsNumbersAndWhatIsNotToldAsNothing) {
    const auto json =
        nlohmann::json::parse(exif({"--format", "json", picture("camera_intel.jpg"), picture("grey.jpg")}).out);
    EXPECT_EQ(json["pictures"][0]["f_number"], 5.6);
    EXPECT_EQ(json["pictures"][0]["exposure_s"], 0.008);
    EXPECT_EQ(json["pictures"][0]["metering"], "pattern");
    EXPECT_TRUE(json["pictures"][1]["iso"].is_null() && json["pictures"][1]["exif"]);
    const std::string csv = exif({"--format", "csv", picture("pillow.jpg")}).out;
    EXPECT_THAT(csv, testing::StartsWith("file,exif,width_px,height_px,process,make,"));
    EXPECT_THAT(
        csv, HasSubstr("\r\n" + picture("pillow.jpg") + ",1,48,32,baseline,Pillow,made by hand,2021-07-15 08:00:00,"));
}

TEST(ExifCommand, NoTextOfAFileIsObeyedByTheTerminal) {
    const std::string text =
        "\x1B]0;a\x07 \xC2\x9B"
        "31m\n\x93\x8C\xE5\x8F\xE3 " +
        std::string(300, 'w');
    for (const char* format : {"table", "json", "csv"}) {
        std::string shown = exif({"--format", format, "-"}, with_comment(text)).out;
        std::erase_if(shown, [](char c) { return c == '\r' || c == '\n'; });
        EXPECT_FALSE(has_control_character(shown)) << format;
    }
    const std::string table = exif({"-"}, with_comment("\x8F\xE3\x8A\x7B " + std::string(300, 'w'))).out;
    EXPECT_THAT(table, HasSubstr("上顎"));
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(display_width(line), 80) << line;
}

TEST(ExifCommand, SaysWhatItReadOfADamagedPictureAndWhyAThumbnailIsMissing) {
    const host_test::Folder folder;
    const std::string whole = bytes_of(pictures / "camera_intel.jpg");
    folder.add("cut.jpg", whole.substr(0, 1340));
    const Outcome cut = exif({"cut.jpg", "--thumbnail", "small.jpg"});
    EXPECT_EQ(cut.code, ExitCode::bad_input);
    EXPECT_THAT(cut.err, HasSubstr("cut.jpg: the picture is damaged: Premature end of file?"));
    for (const char* line : {"  Aperture      f/5.6\n", "  Note          the picture is damaged"})
        EXPECT_THAT(cut.out, HasSubstr(line));
    EXPECT_EQ(bytes_of("small.jpg").size(), 305u);
    EXPECT_THAT(exif({picture("camera_motorola.jpg")}).out, HasSubstr("the thumbnail of 305 bytes is not found"));
    EXPECT_THAT(exif({picture("camera_motorola.jpg"), "--thumbnail", "-"}).err, HasSubstr("big-endian"));
}

TEST(ExifCommand, WritesTheThumbnailWholeAndNeverOverThePicture) {
    const host_test::Folder folder;
    std::filesystem::copy(pictures / "camera_intel.jpg", "a.jpg");
    EXPECT_EQ(exif({"--thumbnail", "small.jpg", "a.jpg"}).code, ExitCode::done);
    EXPECT_EQ(bytes_of("small.jpg").size(), 305u);
    EXPECT_EQ(exif({"--thumbnail", "-", "a.jpg"}).out, bytes_of("small.jpg"));
    EXPECT_EQ(exif({"--thumbnail", "./a.jpg", "a.jpg"}).code, ExitCode::bad_command_line);
    EXPECT_EQ(exif({"-o", "a.jpg", "a.jpg"}).code, ExitCode::bad_command_line);
    EXPECT_EQ(exif({"-o", "b.jpg", "--thumbnail", "./b.jpg", "a.jpg"}).code, ExitCode::bad_command_line);
    EXPECT_EQ(exif({"--thumbnail", "b.jpg", "a.jpg", "small.jpg"}).code, ExitCode::bad_command_line);
    EXPECT_THAT(exif({"--thumbnail", "b.jpg", "small.jpg"}).err, HasSubstr("small.jpg has no thumbnail"));
    EXPECT_FALSE(std::filesystem::exists("b.jpg"));
    EXPECT_EQ(bytes_of("a.jpg"), bytes_of(pictures / "camera_intel.jpg"));
}

TEST(ExifCommand, OneBadFileDoesNotStopTheRest) {
    const host_test::Folder folder;
    folder.add("b/c/Z.JPEG", with_comment("last"));
    folder.add("b/a.jpg", with_comment("first"));
    folder.add("b/broken.jpg", "\xFF\xD8\xFF");
    folder.add("b/notes.txt", "text");
    folder.add("empty/notes.txt", "text");
    const Outcome all = exif({"-r", "--format", "json", "b", "empty", "gone.jpg"});
    EXPECT_EQ(all.code, ExitCode::bad_input);
    const auto json = nlohmann::json::parse(all.out);
    ASSERT_EQ(json["pictures"].size(), 2u);
    EXPECT_EQ(json["pictures"][0]["comment"], "first");
    EXPECT_EQ(json["pictures"][1]["comment"], "last");
    std::string told = all.err;
    std::ranges::replace(told, '\\', '/');
    for (const char* part : {"b/broken.jpg: the picture is damaged: Premature end of file?", "empty: there are no JPEG",
                             "gone.jpg: there is no such file"})
        EXPECT_THAT(told, HasSubstr(part));
    EXPECT_THAT(exif({"b"}).err, HasSubstr("this is a folder\n  --recursive reads"));
    EXPECT_THAT(exif({"b/notes.txt"}).err, HasSubstr("this is no JPEG picture"));
}

TEST(Progress, IsOneLineThatGoesAway) {
    const auto written = [](bool shown, std::chrono::milliseconds patience) {
        std::ostringstream terminal;
        Progress(terminal, shown, 9, "pictures", patience).step();
        return terminal.str();
    };
    EXPECT_EQ(written(true, std::chrono::milliseconds(0)), "\r1 of 9 pictures\r\x1b[K");
    EXPECT_EQ(written(true, std::chrono::hours(1)), "");
    EXPECT_EQ(written(false, std::chrono::milliseconds(0)), "");
}

}  // namespace
}  // namespace cephtool
