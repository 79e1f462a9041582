#include "framework/settings.h"

#include <thread>

#include "framework/application.h"
#include "framework/system.h"
#include "golden_rows.h"
#include "gtest/gtest.h"
#include "platform/settings_file.h"
#include "platform/system.h"
#include "temporary_folder.h"

namespace {

std::optional<std::string> value(std::string_view file, std::string_view section, std::string_view key) {
    const auto found = tool::setting(file, section, key);
    return found ? std::optional<std::string>(*found) : std::nullopt;
}

TEST(Settings, ReadTheRecordedTexts) {
    const TemporaryFolder folder;
    for (const GoldenRow& row : golden_rows("profile_string.tsv")) {
        if (!row.usable()) continue;
        std::filesystem::remove(folder.path("a.ini"));
        if (const auto ini = row.text("ini")) folder.write("a.ini", *ini);
        const auto size = static_cast<DWORD>(row.number("size"));
        std::string buffer(size, '\xEE');
        const DWORD returned =
            GetPrivateProfileStringA(pointer(row.text("section")), pointer(row.text("key")),
                                     pointer(row.text("default")), buffer.data(), size, folder.path("a.ini").c_str());
        if (!row.demanded()) continue;
        const std::string expected = *row.text("buffer");
        EXPECT_EQ(returned, static_cast<DWORD>(row.number("returned"))) << row.field("id");
        EXPECT_EQ(buffer.substr(0, expected.size()), expected) << row.field("id");
        EXPECT_EQ(buffer.find_first_not_of('\xEE', expected.size()), std::string::npos) << row.field("id");
    }
}

TEST(Settings, ReadTheRecordedNumbers) {
    const TemporaryFolder folder;
    for (const GoldenRow& row : golden_rows("profile_int.tsv")) {
        std::filesystem::remove(folder.path("a.ini"));
        if (const auto ini = row.text("ini")) folder.write("a.ini", *ini);
        const UINT read = GetPrivateProfileIntA(row.text("section")->c_str(), row.text("key")->c_str(),
                                                row.number("default"), folder.path("a.ini").c_str());
        if (row.demanded()) {
            EXPECT_EQ(static_cast<int>(read), row.number("returned")) << row.field("id");
        }
    }
}

TEST(Settings, WriteTheRecordedFiles) {
    const TemporaryFolder folder;
    for (const GoldenRow& row : golden_rows("profile_write.tsv")) {
        std::filesystem::remove(folder.path("a.ini"));
        if (const auto ini = row.text("ini_before")) folder.write("a.ini", *ini);
        const auto section = row.text("section"), key = row.text("key"), text = row.text("value");
        const BOOL returned =
            WritePrivateProfileStringA(pointer(section), pointer(key), pointer(text), folder.path("a.ini").c_str());
        if (!row.demanded()) continue;
        EXPECT_EQ(returned, row.number("returned")) << row.field("id");
        EXPECT_EQ(folder.read("a.ini"), *row.text("ini_after")) << row.field("id");
    }
}

#if !defined(_WIN32)  // the system's own function there; Wine cuts lists otherwise

TEST(Settings, ListsThatDoNotFitEndInTwoNulsAndGiveSizeLessTwo) {
    const TemporaryFolder folder;
    folder.write("a.ini", "[one]\nk1=\nk2=\n[two]\n");
    const auto list = [&](LPCSTR section, DWORD size) {
        std::string buffer(size, '#');
        const DWORD returned =
            GetPrivateProfileStringA(section, nullptr, "d", buffer.data(), size, folder.path("a.ini").c_str());
        return std::pair(returned, buffer);
    };
    using namespace std::string_literals;
    EXPECT_EQ(list(nullptr, 9), std::pair(DWORD{8}, "one\0two\0\0"s));
    EXPECT_EQ(list(nullptr, 8), std::pair(DWORD{6}, "one\0tw\0\0"s));
    EXPECT_EQ(list("one", 6), std::pair(DWORD{4}, "k1\0k\0\0"s));
    EXPECT_EQ(list("none", 4), std::pair(DWORD{0}, "\0\0##"s));
    EXPECT_EQ(list("one", 1), std::pair(DWORD{0}, "\0"s));
}

#endif

constexpr std::string_view sample =
    "; written by hand\r\n\r\n[First]\r\n  Key = old  \r\n; note\r\nother='x "
    "'\r\n\r\n\r\n[\x95\x5C]\r\nKey=two\r\n[first]\r\nlate=1";

TEST(Settings, WritingChangesNothingElseInTheFile) {
    const std::string text(sample);
    const auto replaced = [&](std::string from, const std::string& to) {
        std::string copy = text;
        return copy.replace(copy.find(from), from.size(), to) + "\r\n";
    };
    EXPECT_EQ(tool::with_setting(text, "first", "KEY", "new"), replaced("Key = old  ", "Key =new  ").replace(0, 0, ""));
    EXPECT_EQ(tool::with_setting(text, "First", "added", "v"), replaced("'x '\r\n", "'x '\r\nadded=v\r\n"));
    EXPECT_EQ(tool::with_setting(text, "\x95\x5C", "Key", "3"), replaced("Key=two", "Key=3"));
    EXPECT_EQ(tool::without_setting(text, "First", "other"), replaced("other='x '\r\n", ""));
    EXPECT_EQ(tool::without_setting(text, "First", "late"), text);
    EXPECT_EQ(value(tool::without_section(text, "First"), "First", "late"), "1");
    EXPECT_EQ(tool::with_setting("[A]\nk=1\n", "A", "j", "2"), "[A]\nk=1\nj=2\n");
    EXPECT_EQ(value("[A]\n[\x83\x5D\nk=1", "A", "k"), "1");  // no section: a trail byte closes no bracket
}

#ifndef _WIN32  // which has them read by the system
// As a text editor saves them; U+1F9B7 and U+00E9 are no characters of code page 932, which takes é for e.
TEST(Settings, InUtf16AreReadAndKeepTheirForm) {
    const TemporaryFolder folder;
    const std::string path = folder.path("a.ini");
    const auto read = [&](const char* section, const char* key) {
        char buffer[40];
        return std::string(buffer, GetPrivateProfileStringA(section, key, "-", buffer, sizeof buffer, path.c_str()));
    };
    for (const bool big_endian : {false, true}) {
        const auto file = [&](std::u16string_view text) {
            std::string bytes;
            for (const char16_t unit : text)
                for (const int shift : {big_endian ? 8 : 0, big_endian ? 0 : 8})
                    bytes += static_cast<char>(unit >> shift);
            return bytes;
        };
        folder.write("a.ini", file(u"\uFEFF[表]\r\nname=é🦷ソ\r\nn=1\r\n"));
        EXPECT_EQ(read("\x95\x5C", "name"), "e??\x83\x5C");
        EXPECT_EQ(read("\x95\x5C", nullptr), std::string("name\0n\0", 7));
        EXPECT_TRUE(WritePrivateProfileStringA("\x95\x5C", "n", "\x83\x5C", path.c_str()));
        EXPECT_TRUE(WritePrivateProfileStringA("new", "k", "v", path.c_str()));
        EXPECT_EQ(tool::read_file(path), file(u"\uFEFF[表]\r\nname=é🦷ソ\r\nn=ソ\r\n[new]\r\nk=v\r\n"));
        EXPECT_TRUE(WritePrivateProfileStringA("\x95\x5C", nullptr, nullptr, path.c_str()));
        EXPECT_EQ(tool::read_file(path), file(u"\uFEFF[new]\r\nk=v\r\n"));
    }
}
#endif

TEST(Settings, NamesThatCouldNotBeFoundAgainAreRefused) {
    for (const char* key : {"", " ", ";k", "a=b", "a\nb", "[k]"})
        EXPECT_FALSE(tool::with_setting(sample, "First", key, "v")) << key;
    for (const char* section : {"a\rb", "a\nb"}) EXPECT_FALSE(tool::with_setting(sample, section, "k", "v"));
    EXPECT_FALSE(tool::with_setting(sample, "First", "k", "v\n[Second]\nx=1"));
}

TEST(Settings, SurviveDamageAtEveryByte) {
    const std::string text(sample);
    for (std::size_t at = 0; at <= text.size(); ++at) {
        for (const std::string& damaged :
             {text.substr(0, at), text.substr(at), text.substr(0, at) + '\x83' + text.substr(at),
              text.substr(0, at) + '\0' + text.substr(at)}) {
            const auto written = tool::with_setting(damaged, "First", "Key", "new");
            ASSERT_TRUE(written);
            ASSERT_EQ(value(*written, "First", "Key"), "new") << at;
            ASSERT_EQ(value(*written, "\x95\x5C", "Key"), value(damaged, "\x95\x5C", "Key")) << at;
            ASSERT_EQ(tool::setting_keys(tool::without_section(*written, "none"), "First"),
                      tool::setting_keys(*written, "First"));
        }
    }
}

TEST(Settings, WrittenByManyThreadsAreAllKept) {
    const TemporaryFolder folder;
    const std::string file = folder.path("a.ini");
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 25; ++i)
                WritePrivateProfileStringA("S", std::to_string(100 * t + i).c_str(), "1", file.c_str());
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(tool::setting_keys(folder.read("a.ini"), "S").size(), 100u);
}

TEST(Application, KeepsItsProfileBesideTheRunningProgram) {
    const TemporaryFolder folder;
    SetModuleFileNameA(folder.path("program").c_str());
    CWinApp* const plain = AfxGetApp();
    EXPECT_TRUE(plain->WriteProfileString("DB_DIR", "ANAITEMPATH", "C:\\\x95\x5C\\"));
    EXPECT_TRUE(plain->WriteProfileInt("ENV", "POS_X", -5));
    EXPECT_STREQ(plain->GetProfileString("db_dir", "anaitempath"), "C:\\\x95\x5C\\");
    EXPECT_EQ(static_cast<int>(plain->GetProfileInt("ENV", "POS_X", 0)), -5);
    EXPECT_EQ(folder.read("Korvane9.ini"), "[DB_DIR]\r\nANAITEMPATH=C:\\\x95\x5C\\\r\n[ENV]\r\nPOS_X=-5\r\n");
    SetModuleFileNameA(nullptr);
}

TEST(Application, IsTheHostsLastObjectWhileItLives) {
    struct Host : CWinApp {
        int DoMessageBox(LPCSTR text, UINT, UINT) override { return CString(text).GetLength(); }
    };
    CWinApp* const plain = AfxGetApp();
    auto first = std::make_unique<Host>();
    {
        const Host second;
        EXPECT_EQ(AfxGetApp(), &second);
    }
    EXPECT_EQ(AfxGetApp(), first.get());
    EXPECT_EQ(AfxMessageBox("four"), 4);
    first.reset();
    EXPECT_EQ(AfxGetApp(), plain);
}

}  // namespace
