#include "framework/files.h"

#include <chrono>
#include <functional>
#include <thread>

#include "framework/system.h"
#include "gtest/gtest.h"
#include "platform/system.h"
#include "temporary_folder.h"

namespace {

#if defined(_WIN32)
constexpr std::uint32_t file_exists = ERROR_FILE_EXISTS;
#else
constexpr std::uint32_t file_exists = EEXIST;
#endif

// False where the system, or what stands for it, makes no links.
bool make_link(const std::string& target, const std::string& link) {
    std::error_code failure;
    std::filesystem::create_symlink(target, link, failure);
    return !failure;
}

int cause_of(const std::function<void()>& call) {
    try {
        call();
    } catch (CException* exception) {
        const int cause = dynamic_cast<CFileException&>(*exception).m_cause;
        exception->Delete();
        return cause;
    }
    return CFileException::none;
}

TEST(Names, AreFoundIgnoringCaseWithEitherDelimiterAndInCodePage932) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.utf8_path("CalcForm/表ソ"));
    folder.write("CalcForm/表ソ/Ａnalysis.TXT", "found");
    for (const std::string name :
         {"CalcForm/\x95\x5C\x83\x5C/\x82\x60nalysis.TXT", "calcform\\\x95\x5C\x83\x5C\\\x82\x60nalysis.txt",
          "CALCFORM/\x95\x5C\x83\x5C\\\x82\x81NALYSIS.txt"})
        EXPECT_EQ(tool::read_file(folder.path(name)), "found") << name;
    EXPECT_FALSE(tool::read_file(folder.path("CalcForm/\x95\x5C")));
    EXPECT_FALSE(tool::read_file(folder.path("CalcForm")));
    const auto entries = tool::list_folder(folder.path("calcform"));
    ASSERT_TRUE(entries && entries->size() == 1);
    EXPECT_EQ(entries->front().name, "\x95\x5C\x83\x5C");
    EXPECT_TRUE(entries->front().status.is_folder);
}

TEST(Names, TakeTheExactOneBeforeOneOfOtherCase) {
    const TemporaryFolder folder;
    folder.write("a.txt", "small");
    folder.write("A.txt", "capital");
    if (folder.read("a.txt") != "small") GTEST_SKIP() << "names are not told apart by case here";
    EXPECT_EQ(tool::read_file(folder.path("a.txt")), "small");
    EXPECT_EQ(tool::read_file(folder.path("A.txt")), "capital");
    EXPECT_EQ(tool::read_file(folder.path("a.TXT")), "capital");
}

TEST(Names, MissedOnceAreFoundWhenTheyAppear) {
    const TemporaryFolder folder;
    std::error_code no_matter;  // where folders have no time to set
    std::filesystem::last_write_time(folder.path(""),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1), no_matter);
    for (int i = 0; i < 2; ++i) EXPECT_FALSE(tool::read_file(folder.path("Korvane9.ini")));
    folder.write("KORVANE9.INI", "new");
    EXPECT_EQ(tool::read_file(folder.path("Korvane9.ini")), "new");
}

TEST(WholeFiles, AreCopiedWholeOrNotAtAll) {
    const TemporaryFolder folder;
    const std::string big(200'000, 'x');
    folder.write("from", big);
    folder.write("to", "old");
    EXPECT_FALSE(tool::copy_file(folder.path("from"), folder.path("to"), true));
    EXPECT_EQ(tool::last_error(), file_exists);
    EXPECT_EQ(folder.read("to"), "old");
    EXPECT_TRUE(tool::copy_file(folder.path("from"), folder.path("new"), true));
    EXPECT_TRUE(tool::copy_file(folder.path("from"), folder.path("to"), false));
    EXPECT_EQ(folder.read("to"), big);
    EXPECT_FALSE(tool::copy_file(folder.path("none"), folder.path("to"), false));
    EXPECT_FALSE(tool::copy_file(folder.path("from"), folder.path("no/folder"), false));
    EXPECT_EQ(tool::list_folder(folder.path(""))->size(), 3u);  // nothing left over
}

TEST(WholeFiles, KeepReadOnlyFilesAndLinksWhatTheyAre) {
    const TemporaryFolder folder;
    folder.write("target", "old");
    const bool linked = make_link("target", folder.path("link"));
    const std::string path = folder.path(linked ? "link" : "target");
    std::filesystem::permissions(folder.path("target"), std::filesystem::perms::all);
    const std::filesystem::perms rights = std::filesystem::status(path).permissions();  // Windows has fewer
    EXPECT_TRUE(tool::write_file_atomically(path, "new"));
    EXPECT_EQ(folder.read("target"), "new");
    EXPECT_EQ(std::filesystem::status(path).permissions(), rights);
#if !defined(_WIN32)
    struct stat owned;
    const bool given_away = chown(path.c_str(), 7, 8) == 0;  // only root can
    EXPECT_TRUE(tool::write_file_atomically(path, "new") && stat(path.c_str(), &owned) == 0);
    EXPECT_TRUE(!given_away || (owned.st_uid == 7 && owned.st_gid == 8));
#endif
    EXPECT_EQ(tool::file_status(path)->is_link, linked);
    std::filesystem::permissions(folder.path("target"), std::filesystem::perms::owner_read);
    EXPECT_FALSE(tool::write_file_atomically(path, "newer"));
    EXPECT_TRUE(tool::copy_file(folder.path("target"), folder.path("copy"), false));
    EXPECT_TRUE(tool::file_status(folder.path("copy"))->read_only);
    EXPECT_TRUE(tool::clear_read_only(folder.path("copy")));
    EXPECT_FALSE(tool::file_status(folder.path("copy"))->read_only);
    EXPECT_TRUE(tool::clear_read_only(folder.path("target")));  // on Windows it could not be removed
}

TEST(CanonicalPath, KeepsWhatDoesNotExistYet) {
    const TemporaryFolder folder;
    const std::filesystem::path real = std::filesystem::canonical(folder.path("."));
    std::filesystem::create_directory(folder.path("a"));
    const std::string name = make_link("a", folder.path("b")) ? "b" : "a";
    EXPECT_EQ(tool::canonical_path(folder.path(name + "/../" + name)), (real / "a").make_preferred().string());
    EXPECT_EQ(tool::canonical_path(folder.path(name + "/c/d")), (real / "a/c/d").make_preferred().string());
    EXPECT_TRUE(tool::same_folder(folder.path("A"), folder.path(name)));
}

TEST(CFile, WritesSeeksAndReadsBack) {
    const TemporaryFolder folder;
    const std::string path = folder.path("f");
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.Write("0123456789", 10);
    EXPECT_EQ(file.Seek(-4, CFile::end), 6u);
    char buffer[8] = {};
    EXPECT_EQ(file.Read(buffer, 8), 4u);
    EXPECT_STREQ(buffer, "6789");
    EXPECT_EQ(cause_of([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    file.Close();
    CFileStatus status;
    EXPECT_TRUE(CFile::GetStatus(path.c_str(), status));
    EXPECT_EQ(status.m_size, 10);
    EXPECT_TRUE(CFile().Open(path.c_str(), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite));
    EXPECT_EQ(folder.read("f"), "0123456789");
    EXPECT_TRUE(CFile().Open(path.c_str(), CFile::modeCreate | CFile::modeWrite));
    EXPECT_EQ(folder.read("f"), "");
    std::filesystem::create_directory(folder.path("Sub"));
    const auto renamed = [&](const char* to) { CFile::Rename(path.c_str(), folder.path(to).c_str()); };
    EXPECT_EQ(cause_of([&] { renamed("no/G"); }), CFileException::badPath);
    EXPECT_EQ(cause_of([&] { renamed("Sub"); }), CFileException::accessDenied);
    EXPECT_EQ(cause_of([&] { renamed("SUB/G"); }), CFileException::none);
    CFile::Remove(folder.path("Sub/G").c_str());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("Sub")));
}

TEST(CFile, TellsWhyItFailed) {
    const TemporaryFolder folder;
    CFileException failure;
    EXPECT_FALSE(CFile().Open(folder.path("none").c_str(), CFile::modeRead, &failure));
    EXPECT_EQ(failure.m_cause, CFileException::fileNotFound);
    EXPECT_FALSE(CFile().Open(folder.path("").c_str(), CFile::modeRead, &failure));
    EXPECT_EQ(failure.m_cause, CFileException::accessDenied);
    char text[12];
    EXPECT_TRUE(failure.GetErrorMessage(text, sizeof text));
    EXPECT_EQ(std::string(text).size(), 11u);
    CFile full;
    if (!full.Open("/dev/full", CFile::modeWrite)) GTEST_SKIP() << "no full device here";
    EXPECT_EQ(cause_of([&] { full.Write("x", 1); }), CFileException::diskFull);
}

TEST(Process, KeepsTheLastErrorOfEachThread) {
    DWORD seen = 5;
    SetLastError(5);
    EXPECT_EQ(GetLastError(), 5u);
    std::thread([&] { seen = GetLastError(), SetLastError(7); }).join();
    EXPECT_NE(seen, 5u);
    EXPECT_NE(GetLastError(), 7u);
    EXPECT_FALSE(GetErrorText(2).IsEmpty());
}

TEST(Process, TellsItsPathCutToTheBuffer) {
    SetModuleFileNameA("/a/\x95\x5C/tool");
    char path[8];
    EXPECT_EQ(GetModuleFileNameA(nullptr, path, 8), 8u);
    EXPECT_STREQ(path, "/a/\x95\x5C/t");
    SetModuleFileNameA(nullptr);
    char own[300];
    EXPECT_NE(std::string(own, GetModuleFileNameA(nullptr, own, sizeof own)).find("platform_tests"), std::string::npos);
}

TEST(Process, AsksTheClockThatWasSet) {
    SetLocalClock([] { return SYSTEMTIME{2024, 2, 4, 29, 23, 59, 58, 7}; });
    EXPECT_EQ(tool::local_time().day, 29);
    EXPECT_EQ(tool::local_time().weekday, 4);
    SYSTEMTIME now;
#if !defined(_WIN32)  // whose own function knows no other clock
    GetLocalTime(&now);
    EXPECT_EQ(now.wDay, 29);
    EXPECT_EQ(now.wDayOfWeek, 4);
#endif
    SetLocalClock(nullptr);
    GetLocalTime(&now);
    EXPECT_GE(now.wYear, 2024);
    EXPECT_EQ(tool::local_time().year, now.wYear);
}

}  // namespace
