// The segments of a file, and the reader's own life.
#include <gtest/gtest.h>

#include <fstream>
#include <new>
#include <sstream>

#include "exif/jpeg_builder.h"

namespace {
bool memory_is_short = false;
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return memory_is_short ? nullptr : ::operator new[](size);
}

namespace exif_test {
namespace {

// The bytes of one line of files.txt, up to "=" or "]".
std::string bytes_from(std::istream& words) {
    std::string bytes, item;
    for (std::string word; words >> word && word != "=" && word != "]";) {
        if (word[0] == 'x') {
            for (int more = std::stoi(word.substr(1)) - 1; more > 0; --more) bytes += item;
            continue;
        }
        item = word[0] == '"' ? word.substr(1, word.size() - 2) : "";
        if (word.ends_with('[')) {
            item = segment(std::stoi(word, nullptr, 16), bytes_from(words));
        } else if (word[0] != '"') {
            for (std::size_t i = 0; i < word.size(); i += 2)
                item += static_cast<char>(std::stoi(word.substr(i, 2), nullptr, 16));
        }
        bytes += item;
    }
    return bytes;
}

TEST(ExifFile, EndsAsItsBytesSay) {
    std::ifstream lines(TOOL_TEST_DATA "/files.txt");
    int files = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        const Decoded one(bytes_from(words));
        std::ostringstream found;
        found << (one.good ? " yes" : " no") << (one->IsExif ? " yes " : " no ") << one.reader.SectionsRead << " "
              << one->MeteringMode << (one.reader.LastError[0] ? " " : "") << one.reader.LastError;
        EXPECT_EQ(found.str(), line.substr(line.find('=') + 1)) << line;
        EXPECT_TRUE(one.same);
        ++files;
    }
    EXPECT_EQ(files, 39);
}

const std::string frame("\x08\x01\x02\x03\x04\x03", 6);  // 258 lines of 772 samples, three components

TEST(ExifFile, EveryFrameIsReadAndNothingElse) {
    for (int marker = 0xC0; marker < 0xD0; ++marker) {
        const bool is_frame = marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        const Decoded one(jpeg(segment(marker, frame) + segment(marker, frame.substr(0, 5))));
        EXPECT_EQ(one->Process, is_frame ? marker : 0);
        EXPECT_EQ(one->Height, is_frame ? 258 : 0);
        EXPECT_EQ(one->Width, is_frame ? 772 : 0);
        EXPECT_EQ(one->IsColor, is_frame ? 1 : 0);
    }
    EXPECT_EQ(Decoded(jpeg(segment(0xC0, "\x08\1\1\1\1\x04")))->IsColor, 0);
}

TEST(ExifFile, TheFirstCommentIsShownWithoutControlCharacters) {
    const Decoded one(jpeg(segment(0xFE, "a\r\nb\rc\td\x1B\x82\xA0\r") + segment(0xFE, "late")));
    EXPECT_STREQ(one->Comments, "a\nb?c\td?\x82\xA0?");
    EXPECT_EQ(one.reader.SectionsRead, 2);
    EXPECT_EQ(Decoded(jpeg(segment(0xFE, std::string(1998, 'x'))))->Comments, std::string(998, 'x'));
    EXPECT_EQ(Decoded(jpeg(segment(0xFE, std::string(997, 'x') + "\r\nbehind")))->Comments, std::string(997, 'x'));
    EXPECT_STREQ(Decoded(jpeg(segment(0xFE, "gone") + segment(0xE1, "Exif")))->Comments, "");
}

TEST(CExifReader, KeepsWhatTheCallerAndEarlierFilesLeft) {
    tag_ExifInfo info{};
    info.Height = 7;
    info.IsoSpeed = 100;
    {
        const std::string file = jpeg(segment(0xC2, frame) + segment(0xE1, "Exif"));
        Decoded one(file, &info);
        const auto* bytes = reinterpret_cast<const unsigned char*>(file.data());
        for (int files = 2; files <= 6; ++files) EXPECT_TRUE(one.reader.DecodeExif(bytes, file.size()));
        EXPECT_STREQ(one.reader.LastError, "Invalid Exif alignment marker.");  // stays on success
        for (int files = 7; files <= 8; ++files) EXPECT_FALSE(one.reader.DecodeExif(bytes, file.size()));
        EXPECT_STREQ(one.reader.LastError, "Too many sections in jpg file");
    }
    EXPECT_EQ(info.Height, 258);
    EXPECT_EQ(info.IsoSpeed, 100);
}

TEST(CExifReader, SaysWhenMemoryIsShort) {
    memory_is_short = true;
    const Decoded one(jpeg(segment(0xC0, frame)));
    memory_is_short = false;
    EXPECT_FALSE(one.good || !one.same);
    EXPECT_STREQ(one.reader.LastError, "Could not allocate memory");
    EXPECT_FALSE(CExif().DecodeExif(nullptr));
}

}  // namespace
}  // namespace exif_test
