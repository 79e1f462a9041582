// What an EXIF block says.
#include <gtest/gtest.h>

#include <bit>

#include "exif/jpeg_builder.h"

namespace exif_test {
namespace {

constexpr Order intel = Order::intel, motorola = Order::motorola;
constexpr Order both_orders[] = {intel, motorola};

TEST(ExifValue, IsReadInEveryFormatAndBothOrders) {
    for (const Order order : both_orders) {
        struct {
            std::uint32_t format;
            std::string value;
            float read;
        } const rows[] = {{1, "\xFE", 254},
                          {2, "9", 0},
                          {3, number(order, 0xFFFE, 2), 65534},
                          {4, number(order, 0xFFFFFF00, 4), 4294967040.0F},
                          {5, ratio(order, 7, 2), 3.5F},
                          {5, ratio(order, 0xFFFFFFFF, 1), -1},  // signed, although the format is not
                          {5, ratio(order, 7, 0), 0},
                          {6, "\xFE", -2},
                          {7, "9", 0},
                          {8, number(order, 0xFFFE, 2), -2},
                          {9, number(order, 0xFFFFFF00, 4), -256},
                          {10, ratio(order, -7, 2), -3.5F},
                          {11, number(order, std::bit_cast<std::uint32_t>(0.1F), 4), 0.1F},
                          {12, number(order, std::bit_cast<std::uint64_t>(0.3), 8), 0.3F}};
        for (const auto& row : rows) {
            const Decoded one(with_tags(order, {{0x011A, row.format, 1, row.value}}));
            EXPECT_TRUE(one->IsExif && one.same);
            EXPECT_EQ(one->XResolution, row.read) << row.format;
        }
    }
    // No component is counted, so the eight bytes begin in the entry.
    EXPECT_EQ(Decoded(with_tags(motorola, {{0x011A, 12, 0, "\x3F\xF0"}}))->XResolution, 1.0F);
}

TEST(ExifTag, GoesToItsField) {
    using I = tag_ExifInfo;
    const std::pair<std::uint32_t, float I::*> floats[] = {{0x011A, &I::XResolution},
                                                           {0x011B, &I::YResolution},
                                                           {0x829A, &I::ExposureTime},
                                                           {0x829D, &I::FNumber},
                                                           {0x9203, &I::Brightness},
                                                           {0x9204, &I::ExposureBias},
                                                           {0x9206, &I::SubjectDistance},
                                                           {0x920A, &I::FocalLength},
                                                           {0xA20E, &I::FocalPlaneXResolution},
                                                           {0xA20F, &I::FocalPlaneYResolution}};
    struct {
        std::uint32_t tag;
        std::int64_t value;
        std::int32_t I::*field;
        std::int32_t stored;
    } const integers[] = {{0x9207, 5, &I::MeteringMode, 5},
                          {0x9207, 0xFFFFFFFF, &I::MeteringMode, 2147483647},
                          {0x9208, 10, &I::LightSource, 10},
                          {0x8822, 3, &I::ExposureProgram, 3},
                          {0x9102, 4, &I::CompressedBitsPerPixel, 4},
                          {0x8827, 4, &I::IsoSpeed, 800},
                          {0x8827, 49, &I::IsoSpeed, 9800},
                          {0x8827, 50, &I::IsoSpeed, 50},
                          {0x9209, 8, &I::FlashUsed, 0},
                          {0x9209, 4, &I::FlashUsed, 1},
                          {0x0112, 8, &I::Orientation, 8},
                          {0x0112, 9, &I::Orientation, 0},
                          {0x0112, 0, &I::Orientation, 0}};
    for (const Order order : both_orders) {
        for (const auto& [tag, field] : floats)
            EXPECT_EQ(*Decoded(with_tags(order, {{tag, 10, 1, ratio(order, -1, 4)}})).reader.Info.*field, -0.25F)
                << tag;
        for (const auto& row : integers) {
            const Decoded one(
                with_tags(order, {{row.tag, 4, 1, number(order, static_cast<std::uint64_t>(row.value), 4)}}));
            EXPECT_EQ(one.reader.Info->*row.field, row.stored) << row.tag;
            const bool undefined = row.tag == 0x0112 && row.stored == 0;
            EXPECT_STREQ(one.reader.LastError, undefined ? "Undefined rotation value" : "");
            EXPECT_TRUE(one->IsExif);
        }
    }
    const Decoded one(
        with_tags(intel, {{0x9207, 10, 1, ratio(intel, -199, 100)}, {0x8827, 9, 1, number(intel, 0x80000001, 4)}}));
    EXPECT_EQ(one->MeteringMode, -1);  // cut toward zero
    EXPECT_EQ(one->IsoSpeed, INT32_MIN);
}

// So does the sensor's width, which comes from the larger dimension.
TEST(ExifTag, OfAUnitGivesInches) {
    constexpr float unknown = 7, inches[] = {unknown, 1, 1, 0.3937008F, 0.03937008F, 3.937008e-05F, unknown};
    for (const float& inch : inches) {
        const auto index = static_cast<char>(&inch - inches);
        const std::string code(1, index);
        const std::uint32_t width = index % 2 ? 5000 : 3000;
        tag_ExifInfo info{};
        info.ResolutionUnit = info.FocalPlaneUnit = unknown;
        const Decoded one(with_tags(intel, {{0x0128, 1, 1, code},
                                            {0xA210, 1, 1, code},
                                            {0xA002, 4, 1, number(intel, width, 4)},
                                            {0xA003, 4, 1, number(intel, 4000, 4)},
                                            {0xA20E, 5, 1, ratio(intel, 2000, 1)}}),
                          &info);
        EXPECT_EQ(info.ResolutionUnit, inch);
        EXPECT_EQ(info.FocalPlaneUnit, inch);
        EXPECT_EQ(info.CcdWidth, static_cast<float>(std::max(width, 4000u)) * inch / 2000.0F);
    }
}

TEST(ExifTag, OfApexGivesWayToThePlainOne) {
    const std::vector<Tag> apex = {
        {0x9201, 10, 1, ratio(intel, 5, 1)}, {0x9202, 5, 1, ratio(intel, 4, 1)}, {0x9205, 5, 1, ratio(intel, 2, 1)}};
    const Decoded alone(with_tags(intel, apex));
    EXPECT_EQ(alone->ExposureTime, 1.0F / 32);
    EXPECT_EQ(alone->FNumber, 4.0F);  // the first of the two that tell it
    EXPECT_EQ(Decoded(with_tags(intel, {apex[2]}))->FNumber, 2.0F);
    const Decoded both(
        with_tags(intel, {{0x829A, 5, 1, ratio(intel, 1, 3)}, {0x829D, 5, 1, ratio(intel, 5, 1)}, apex[0], apex[1]}));
    EXPECT_EQ(both->ExposureTime, 1.0F / 3);
    EXPECT_EQ(both->FNumber, 5.0F);
}

TEST(ExifTag, TextEndsAtItsFieldItsCountOrANul) {
    const std::string text(60, 'x'), version("0\00030", 4);
    const Decoded longest(with_tags(
        motorola, {{0x010F, 2, 60, text}, {0x0110, 2, 60, text}, {0x9003, 2, 60, text}, {0x9000, 7, 4, version}}));
    EXPECT_EQ(longest->Make, text.substr(0, 31));
    EXPECT_EQ(longest->Model, text.substr(0, 39));
    EXPECT_EQ(longest->DateTimeOriginal, text.substr(0, 19));
    EXPECT_EQ(std::string(longest->ExifVersion, 4), version);
    const Decoded cut(
        with_tags(intel, {{0x010F, 2, 3, "abcd"}, {0x0110, 2, 6, std::string("ab\0cde", 6)}, {0x9000, 7, 0, "0230"}}));
    EXPECT_STREQ(cut->Make, "abc");
    EXPECT_STREQ(cut->Model, "ab");
    EXPECT_STREQ(cut->ExifVersion, "0230");  // four bytes, whatever is counted
    EXPECT_STREQ(Decoded(with_tags(intel, {{0x9000, 7, 6, "023101"}}))->ExifVersion, "0231");
}

TEST(ExifTag, UserCommentLosesItsCodeAndItsBlanks) {
    const std::pair<std::string, std::string> rows[] = {{std::string("ASCII\0\0\0by hand   ", 18), "by hand"},
                                                        {std::string("ASCII     late", 14), "before"},
                                                        {std::string("ASCII\0x", 7), "x"},
                                                        {std::string("ASCII\0\0", 7), "before"},
                                                        {std::string("UNICODE\0a\0", 10), "UNICODE"},
                                                        {"    ", ""},
                                                        {std::string(300, 'y'), std::string(199, 'y')}};
    for (const auto& [value, comment] : rows) {
        const auto count = static_cast<std::uint32_t>(value.size());
        EXPECT_EQ(Decoded(with_tags(intel, {{0x9286, 7, 6, "before"}, {0x9286, 7, count, value}}))->Comments, comment);
    }
    const Decoded in_place(with_tags(intel, {{0x9286, 7, 4, "ab  "}}));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(in_place.reader.Sections[0].Data) + 26, 4), std::string("ab\0\0", 4));
}

// The link's second half alone is the offset in a little-endian file; a big-endian one shows its first half, 0.
TEST(ExifDirectory, TheNextOneIsFoundInIntelOrderOnly) {
    for (const Order order : both_orders)
        for (const std::uint32_t size : {42u, 43u}) {
            const std::string first = directory(order, 8, {{0xFFFF, 7, 0, ""}}, 26);
            const std::string second =
                directory(order, 26, {{0x0201, 4, 1, number(order, 16, 4)}, {0x0202, 4, 1, number(order, size, 4)}});
            Decoded one(with_exif(order, first + second));
            EXPECT_TRUE(one->IsExif);
            const bool found = order == intel && size == 42;  // up to two bytes behind the segment, whose end is at 56
            EXPECT_EQ(one->ThumbnailSize, found ? size : 0);
            EXPECT_EQ(one->ThumbnailPointer, found ? one.reader.Sections[0].Data + 8 + 16 : nullptr);
        }
}

TEST(ExifDirectory, BelowSixtyFourOpenOnesIsPassedOver) {
    std::string chain;
    for (std::uint32_t i = 1; i <= 200; ++i)
        chain +=
            directory(intel, 8, {{0x8769, 4, 1, number(intel, 8 + i * 30, 4)}, {0xA002, 3, 1, number(intel, i, 2)}});
    const Decoded deep(with_exif(intel, chain));
    EXPECT_TRUE(deep->IsExif);
    EXPECT_EQ(deep.reader.ExifImageWidth, 64);
    EXPECT_STREQ(deep.reader.LastError, "");
}

// Of a block that ends where the caller says, as of the file that it stands in.
TEST(ExifStep, ReadsACallersOwnBytes) {
    for (const Order order : both_orders) {
        const std::string directories =
            directory(order, 8, {{0x010F, 2, 6, "Makers"}, {0x920A, 5, 1, ratio(order, 50, 1)}});
        const std::string file = with_exif(order, directories), block = file.substr(6, file.size() - 6 - 4);
        std::vector<unsigned char> bytes(block.begin(), block.end());
        CExif reader;
        EXPECT_TRUE(reader.process_EXIF(bytes.data(), static_cast<unsigned>(bytes.size())));
        EXPECT_STREQ(reader.Info->Make, "Makers");
        EXPECT_EQ(reader.Info->FocalLength, 50);
        tag_ExifInfo other{};
        unsigned char* last = nullptr;
        const auto length = static_cast<unsigned>(bytes.size()) - 6;
        EXPECT_TRUE(reader.ProcessExifDir(&bytes[14], &bytes[6], length, &other, &last));
        EXPECT_STREQ(other.Make, "Makers");
        EXPECT_EQ(last, bytes.data() + bytes.size());
        for (unsigned cut = 0; cut < length; ++cut) {
            std::vector<unsigned char> part(bytes.begin(), bytes.begin() + 6 + cut);
            EXPECT_FALSE(reader.ProcessExifDir(part.data() + 14, part.data() + 6, cut, &other, &last)) << cut;
        }
        EXPECT_FALSE(reader.ProcessExifDir(&bytes[0], &bytes[6], length, &other, nullptr));
        EXPECT_STREQ(reader.LastError, "Illegally sized directory");
        const std::string raw = ratio(order, 0xFFFE0001, 2);
        EXPECT_EQ(reader.ConvertAnyFormat(raw.data(), 10), -65535.5);
        EXPECT_EQ(reader.ConvertAnyFormat(raw.data(), 13), 0);
        EXPECT_EQ(reader.Get32s(raw.data()), -131071);
        EXPECT_EQ(reader.Get32u(raw.data()), 0xFFFE0001);
        EXPECT_EQ(reader.Get16u(raw.data()), order == intel ? 1 : 0xFFFE);
        EXPECT_EQ(CExif::Get16m(raw.data()), order == intel ? 0x100 : 0xFFFE);
    }
    CExif reader;
    reader.process_SOFn(reinterpret_cast<const unsigned char*>("\0\21\10\1\2\3\4\3"), 0xC2);
    EXPECT_TRUE(reader.Info->Height == 258 && reader.Info->Width == 772 && reader.Info->IsColor == 1);
    reader.process_COM(reinterpret_cast<const unsigned char*>("\0\5a\r\n"), 4);
    EXPECT_STREQ(reader.Info->Comments, "a?");  // the line feed is not the comment's
    reader.process_COM(nullptr, 9);
    EXPECT_STREQ(reader.Info->Comments, "");
}

}  // namespace
}  // namespace exif_test
