#include "film/film_scale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "film/film.h"

namespace {

using testing::HasSubstr;
using tool::FilmPlane;
using tool::PixelSpacing;

// Explicit little endian; values are padded by the caller.
std::string element(unsigned tag, const char* type, const std::string& value) {
    std::string bytes;
    for (const unsigned byte : {tag >> 16, tag >> 24, tag, tag >> 8}) bytes += static_cast<char>(byte);
    bytes += type;
    if (type == std::string("OW")) bytes.append(2, '\0');
    for (unsigned i = 0, size = static_cast<unsigned>(value.size()); i < (type == std::string("OW") ? 4u : 2u); ++i)
        bytes += static_cast<char>(size >> 8 * i);
    return bytes + value;
}

TEST(FilmScale, IsThatOfThePatientWhereTheHeaderSaysEnough) {
    const PixelSpacing tenth{0.1, 0.1}, calibrated{0.0909, 0.0909};
    const struct {
        tool::DicomScale tags;
        std::optional<double> given;
        double mm;
        FilmPlane plane;
        const char* source;
    } rows[] = {
        {{.imager_spacing = tenth}, {}, 0.1, FilmPlane::detector, "(0018,1164) 0.1 mm"},
        {{.imager_spacing = tenth, .magnification = 1.25}, {}, 0.08, FilmPlane::patient, "(0018,1114) 1.25"},
        {{.imager_spacing = tenth, .magnification = 1.25}, 1.1, 0.1 / 1.1, FilmPlane::patient, "given, 1.1"},
        {{.imager_spacing = tenth, .magnification = 0, .detector_distance = 1650, .patient_distance = 1500},
         {},
         0.1 * 1500 / 1650,
         FilmPlane::patient,
         "1650 mm / Distance Source to Patient (0018,1111) 1500 mm = 1.1"},
        {{.imager_spacing = tenth, .magnification = 1.1, .detector_distance = 1650, .patient_distance = 1500},
         {},
         0.1 * 1500 / 1650,
         FilmPlane::patient,
         "(0018,1114) 1.1"},
        {{.imager_spacing = tenth, .detector_distance = 1650, .patient_distance = 0},
         {},
         0.1,
         FilmPlane::detector,
         "(0018,1164)"},
        {{.imager_spacing = tenth, .pixel_spacing = tenth}, {}, 0.1, FilmPlane::detector, "(0018,1164)"},
        {{.imager_spacing = tenth, .pixel_spacing = calibrated}, {}, 0.0909, FilmPlane::patient, "(0028,0030)"},
        {{.imager_spacing = tenth, .pixel_spacing = calibrated, .calibration_type = "GEOMETRY", .magnification = 1.1},
         {},
         0.0909,
         FilmPlane::patient,
         "calibrated (GEOMETRY)"},
        {{.imager_spacing = tenth, .pixel_spacing = calibrated, .calibration_type = "FIDUCIAL", .magnification = 1.3},
         {},
         0.0909,
         FilmPlane::patient,
         "calibrated (FIDUCIAL)"},
        {{.pixel_spacing = tenth}, {}, 0.1, FilmPlane::unknown, "(0028,0030) 0.1 mm"},
        {{.pixel_spacing = tenth, .magnification = 1.1}, {}, 0.1, FilmPlane::unknown, "(0028,0030)"},
        {{.pixel_spacing = tenth}, 1.1, 0.1 / 1.1, FilmPlane::patient, "given, 1.1"},
    };
    for (const auto& row : rows) {
        const tool::FilmScale scale = tool::scale_of_header({.scale = row.tags}, row.given);
        EXPECT_EQ(scale.mm_per_pixel, row.mm) << scale.source << scale.error;
        EXPECT_EQ(scale.plane, row.plane) << scale.source;
        EXPECT_THAT(scale.source, HasSubstr(row.source));
    }
    EXPECT_EQ(tool::scale_of_header({}).mm_per_pixel, std::nullopt);
    EXPECT_EQ(tool::scale_of_header({}).error, "");
}

TEST(FilmScale, IsNoneWhereTheHeaderContradictsItself) {
    const PixelSpacing tenth{0.1, 0.1};
    const struct {
        tool::DicomScale tags;
        std::optional<double> given;
        const char* error;
    } rows[] = {
        {{.imager_spacing = PixelSpacing{0.2, 0.1}}, {}, "rows lie 0.2 mm apart and columns 0.1 mm"},
        {{.imager_spacing = PixelSpacing{0, 0.1}}, {}, "0\\0.1, which is no width"},
        {{.imager_spacing = tenth, .aspect_down = 2, .aspect_across = 1}, {}, "Aspect Ratio (0028,0034) is 2:1"},
        {{.imager_spacing = tenth, .magnification = 0.9}, {}, "never make smaller"},
        {{.imager_spacing = tenth, .detector_distance = 1500, .patient_distance = 1650}, {}, "never make smaller"},
        {{.imager_spacing = tenth, .magnification = 1.2, .detector_distance = 1650, .patient_distance = 1500},
         {},
         "1.2 by Estimated"},
        {{.imager_spacing = tenth, .pixel_spacing = PixelSpacing{0.11, 0.11}}, {}, "larger at the patient"},
        {{.imager_spacing = tenth, .pixel_spacing = tenth, .calibration_type = "GEOMETRY", .magnification = 1.1},
         {},
         "comes to 0.0909091 mm"},
        {{.pixel_spacing = tenth, .calibration_type = "GEOMETRY"}, 1.1, "already"},
    };
    for (const auto& row : rows) {
        const tool::FilmScale scale = tool::scale_of_header({.scale = row.tags}, row.given);
        EXPECT_EQ(scale.mm_per_pixel, std::nullopt) << row.error;
        EXPECT_THAT(scale.error, HasSubstr(row.error));
    }
}

TEST(FilmScale, SaysWhatIsDoubtful) {
    const PixelSpacing tenth{0.1, 0.1}, smaller{0.09, 0.09};
    const struct {
        tool::DicomScale tags;
        const char* doubt;
    } rows[] = {
        {{.pixel_spacing = tenth, .magnification = 1.1}, "The film notes a magnification of 1.1, which may be out"},
        {{.imager_spacing = tenth, .pixel_spacing = smaller}, "the film does not say how (0028,0A02)"},
        {{.imager_spacing = tenth, .pixel_spacing = smaller, .calibration_type = "OTHER"}, "OTHER, is not known"},
        {{.pixel_spacing = tenth, .calibration_type = "OTHER"}, "(0028,0A02), OTHER, is not known"},
        {{.imager_spacing = tenth, .calibration_type = "GEOMETRY"}, "but no Pixel Spacing (0028,0030)"},
        {{.imager_spacing = tenth, .magnification = 1.6}, "A magnification of 1.6 is unusual."},
    };
    for (const auto& row : rows) {
        const auto doubts = tool::scale_of_header({.scale = row.tags}).doubts;
        ASSERT_EQ(doubts.size(), 1u) << row.doubt;
        EXPECT_THAT(doubts.front().sentence(), HasSubstr(row.doubt));
    }
}

TEST(FilmScale, OfAResolutionIsDoubtful) {
    const tool::FilmHeader scanned{.resolution = tool::Resolution{254, 254}},
        screen{.resolution = tool::Resolution{72, 72}};
    EXPECT_NEAR(*tool::scale_of_resolution(scanned).mm_per_pixel, 0.1, 1e-12);
    EXPECT_NEAR(*tool::scale_of_resolution(scanned, 1.25).mm_per_pixel, 0.08, 1e-12);
    EXPECT_TRUE(tool::scale_of_resolution(scanned).doubts.empty());
    EXPECT_FALSE(tool::scale_of_resolution(screen).doubts.empty());
    EXPECT_THAT(tool::scale_of_resolution({.resolution = tool::Resolution{300, 150}}).error, HasSubstr("not square"));
    EXPECT_THAT(tool::scale_of_resolution({}).error, HasSubstr("no resolution"));
}

// Pixels of 14 MB of which none is there, and in front of them nothing or more than headers usually have.
TEST(FilmHeader, IsReadWithoutThePixels) {
    const auto path = std::filesystem::temp_directory_path() / ("film." + std::to_string(std::random_device()()));
    for (const std::size_t own : {0u, 200'000u}) {
        std::string file = std::string(128, '\0') + "DICM";
        file += element(0x00181164, "DS", "0.2\\0.1 ") + element(0x00280010, "US", {"\0\x08", 2});
        file += element(0x00280011, "US", {"\0\x09", 2}) + element(0x00280100, "US", {"\x10", 2});
        for (std::size_t at = 0; at < own; at += 50'000) file += element(0x00290010, "LO", std::string(50'000, 'a'));
        file += std::string("\xE0\x7F\x10\0OW\0\0\0\0\xE0\0", 12);
        std::ofstream(path, std::ios::binary) << file;
        const tool::ReadHeader read = tool::read_film_header(path.string());
        EXPECT_EQ(read.error, "");
        EXPECT_TRUE(read.width == 0x900 && read.height == 0x800 && read.header.scale.imager_spacing) << own;
    }
    std::filesystem::remove(path);
}

// The names are the standard's own examples, PS3.5 H.3.
TEST(FilmHeader, TellsOfThePatient) {
    const struct {
        const char *sets, *name, *shown;
    } rows[] = {
        {"", "Doe^Jane", "Doe Jane"},
        {"\\ISO 2022 IR 87", "Yamada^Tarou=\x1B$B;3ED\x1B(B^\x1B$BB@O:\x1B(B=\x1B$B$d$^$@\x1B(B^\x1B$B$?$m$&\x1B(B",
         "山田 太郎"},
        {"ISO 2022 IR 13\\ISO 2022 IR 87",
         "\xD4\xCF\xC0\xDE^\xC0\xDB\xB3=\x1B$B;3ED\x1B(J^\x1B$BB@O:\x1B(J=\x1B$B$d$^$@\x1B(J^\x1B$B$?$m$&\x1B(J",
         "山田 太郎"},
        {"ISO_IR 13", "\xD4\xCF\xC0\xDE^\xC0\xDB\xB3", "ﾔﾏﾀﾞ ﾀﾛｳ"},
        {"ISO_IR 192", "Wang^XiaoDong=王^小東", "王 小東"},
        {"\\ISO 2022 IR 87\\ISO 2022 IR 159", "\x1B$(D\x22\x2F\x1B(B^\x1B$B3=>=\x1B(B", "˘ 浬晶"},
        {"\\ISO 2022 IR 149", "Hong^Gildong=\x1B$)C\xFB\xF3^\x1B$)C\xD1\xCE\xD4\xD7", "洪 吉洞"},
        {"ISO_IR 192", "A\xFF", "A?"},
        {"ISO_IR 100", "Buc^J\xE9r\xF4me", "Buc Jérôme"},
    };
    for (const auto& row : rows) {
        std::string file = std::string(128, '\0') + "DICM";
        file += element(0x00080005, "CS", row.sets) + element(0x00080022, "DA", "20250602");
        file += element(0x00100010, "PN", row.name) + element(0x00100030, "DA", "20120331");
        file += element(0x00100040, "CS", "M ") + element(0x00181164, "DS", "0.2\\0.1 ");
        file += element(0x00200062, "CS", "L ") + element(0x00280004, "CS", "MONOCHROME2 ");
        file += element(0x00280010, "US", {"\1", 2}) + element(0x00280011, "US", {"\2", 2});
        file += element(0x00280100, "US", {"\x8", 2}) + element(0x7FE00010, "OW", "ab");
        const tool::Film film = tool::decode_film(file);
        ASSERT_TRUE(film) << film.error;
        const tool::FilmPatient& patient = film.header.patient;
#ifdef TOOL_FILM_ICONV
        EXPECT_EQ(patient.name, row.shown);
#endif
        EXPECT_EQ(patient.birth_date + patient.sex + patient.film_date + patient.laterality, "20120331M20250602L");
        EXPECT_EQ(film.header.scale.imager_spacing->down_mm, 0.2);
        EXPECT_EQ(film.header.scale.imager_spacing->across_mm, 0.1);
    }
}

}  // namespace
