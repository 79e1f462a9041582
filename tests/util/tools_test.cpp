#include "Tools.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "framework/input_method.h"
#include "framework/system.h"
#include "platform/number_text.h"
#include "util/call_table.h"
#include "util/fake_host.h"
#include "util/window_placement.h"

namespace {

namespace fs = std::filesystem;
using std::string, std::to_string;

string line_and_length(const string& readable, int max) {
    const std::vector<char> exact(readable.begin(), readable.end());  // a sanitizer sees one byte more
    int consumed = 0;
    const CString line = CTools::GetLineText(const_cast<char*>(exact.data()), &consumed, max);
    return string(line) + ' ' + to_string(consumed);
}

// The forms on a buffer and on a CString must agree.
string rewritten(int (*in_buffer)(char*), void (*in_text)(CString&), string path) {
    CString text = path.c_str();
    in_text(text);
    path.resize(99);
    EXPECT_EQ(in_buffer(path.data()), text.GetLength());
    EXPECT_EQ(text, path.c_str());
    return path.c_str();
}

// What the calls of the tables work on: a host, a window and an empty folder, which paths are relative to.
struct World {
    FakeHost host;
    CWnd window;
    CInputMethod method;
    const fs::path started_in = fs::current_path();
    const fs::path root = fs::temp_directory_path() / ("tools-" + to_string(std::random_device()()));

    World() { window.SetInputMethod(&method); }
    ~World() {
        fs::current_path(started_in);
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root))  // Windows would keep them
            if (!entry.is_symlink()) fs::permissions(entry, fs::perms::owner_write, fs::perm_options::add);
        fs::remove_all(root);
    }

    static string hex(COLORREF colour) { return (std::ostringstream() << std::hex << colour).str(); }
    static string left_in(const string& buffer) { return buffer.substr(0, buffer.find_last_not_of('#') + 1); }
    static string edges(const RECT& r) {
        return to_string(r.left) + " " + to_string(r.top) + " " + to_string(r.right) + " " + to_string(r.bottom);
    }
    string placement() const {
        WINDOWPLACEMENT now{};
        window.GetWindowPlacement(&now);
        return to_string(now.showCmd) + ' ' + edges(now.rcNormalPosition);
    }

    string answer(const string& call, Fields f) {
        f.resize(5);
        const char* const first = f[0].c_str();
        const auto n = [&f](std::size_t i) { return std::atoi(f[i].c_str()); };
        const auto colour = static_cast<COLORREF>(std::strtoul(first, nullptr, 16));
        string text = f[0] + '\0' + string(99, '#'), key(99, '#'), value(99, '#');
        if (call == "StrCut") return CTools::StrCut(text.data(), text.data(), n(1), n(2)), text.c_str();
        if (call == "Del_Space") return CTools::Del_Space(text.data()), left_in(text);
        if (call == "And_Check") return CTools::And_Check(text.data(), value.data()), value.c_str();
        if (call == "Div_Str") CTools::Div_Str(first, key.data(), value.data());
        if (call == "Div_StrText") CTools::Div_Str(CString(first), key.data(), value.data());
        if (call == "Div_StrFree") CTools::Div_StrFree(first, key.data(), value.data());
        if (call.starts_with("Div_Str")) return left_in(key) + ' ' + value.c_str();
        if (call == "GetLineText") return line_and_length(f[0], n(1));
        if (call == "IsNull")
            return to_string(CTools::IsNull(reinterpret_cast<BYTE*>(text.data()), static_cast<UINT>(n(1))));
        if (call == "FtoA") return string(CTools::FtoA(std::strtod(first, nullptr), n(1)));
        if (call == "IsNum") return to_string(CTools::IsNum(first));
        if (call == "TransIndex") return string(CTools::TransIndex(n(0), n(1)));
        if (call == "ConvIndex") return to_string(CTools::ConvIndex(first));
        if (call == "Envert") return hex(CTools::Envert(colour));
        if (call == "Dark") return hex(CTools::Dark(colour, n(1)));
        if (call == "LastDelimAdd") return rewritten(CTools::LastDelimAdd, CTools::LastDelimAdd, f[0]);
        if (call == "LastDelimDel") return rewritten(CTools::LastDelimDel, CTools::LastDelimDel, f[0]);
        if (call == "GetFileTitle") return string(CTools::GetFileTitle(first));
        if (call == "GetFileExt") return string(CTools::GetFileExt(first));

        if (call == "SetModuleFileName") return SetModuleFileNameA(*first ? first : nullptr), "";
        if (call == "ProgramFolder") return CTools::GetExecutionFileDirectoryPath();
        if (call == "ClampAcross") return edges(tool::clamped_to_screen({n(0), 0, n(0) + n(1), 9}, n(2), 0, n(3), 1));
        if (call == "ClampDown") return edges(tool::clamped_to_screen({0, n(0), 9, n(0) + n(1)}, 0, n(2), 1, n(3)));
        if (call == "profile") return host.profile["ENV/w" + f[0]] = n(1), "";
        if (call == "profiled") return to_string(host.profile["ENV/w" + f[0]]);
        if (call == "LoadWindowPos") return CTools::LoadWindowPos(&window, "w"), placement();
        if (call == "SaveWindowPos") return CTools::SaveWindowPos(&window, "w"), "";
        if (call == "GetFurigana") return method.m_strReading = first, string(CTools::GetFurigana(&window, n(1)));
        if (call == "conversion") return method.m_dwConversion = static_cast<DWORD>(n(0)), "";
        if (call == "ImmSet") CTools::ImmSet(window.m_hWnd, n(0), static_cast<UINT>(n(1)));
        if (call == "ImmSet") return to_string(method.m_bOpen) + ' ' + to_string(method.m_dwConversion);
        return folder_answer(call, f, n(2));
    }

    string folder_answer(const string& call, const Fields& f, int flag) const {
        const auto there = [&](const string& utf8) { return root / std::u8string(utf8.begin(), utf8.end()); };
        const auto named = [&](const string& name) { return name.empty() ? name : root.string() + '/' + name; };
        CString from = named(f[0]).c_str(), to = named(f[1]).c_str();
        if (call == "file") return std::ofstream(there(f[0])) << "12345", "";
        if (call == "link") return fs::create_directory_symlink(there(f[0]), there(f[1])), "";
        if (call == "protect") return fs::permissions(there(f[0]), fs::perms::owner_read), "";
        if (call == "protected")
            return to_string((fs::status(there(f[0])).permissions() & fs::perms::owner_write) == fs::perms::none);
        if (call == "there") return to_string(fs::exists(fs::symlink_status(there(f[0]))));
        if (call == "DirectoryCopy") return to_string(CTools::DirectoryCopy(from, to));
        if (call == "CopyFolderFile") return to_string(CTools::CopyFolderFile(from, to));
        if (call == "fCopyNonrFile") return to_string(CTools::fCopyNonrFile(from, to, flag));
        if (call == "DeleteFolder") return CTools::DeleteFolder(from), "";
        if (call == "_DeleteFolder") return CTools::_DeleteFolder(from), "";
        if (call == "FileRemove") return CTools::FileRemove(from), "";
        if (call == "MkDir") return to_string(CTools::MkDir(from));
        if (call == "GetFileSize") return to_string(CTools::GetFileSize(from));
        if (call == "ExistFile") return to_string(CTools::ExistFile(from));
        if (call == "WriteProfileIntEx") return CTools::WriteProfileIntEx("ENV", "wk", flag, from), "";
        if (call == "GetProfileIntEx") return to_string(CTools::GetProfileIntEx("ENV", "wk", flag, from));
        return "no such call";
    }
};

TEST(Tools, AnswerAsTheTablesSay) {
    World world;
    const auto answer = [&](const string& call, const Fields& fields) { return world.answer(call, fields); };
    for (const char* table : {"text", "application", "folders"})
        expect_answers(TOOL_TEST_DATA "/" + string(table) + ".txt", answer);
    std::error_code failure;
    fs::create_directory_symlink(world.root, world.root / "no link", failure);
    if (failure) GTEST_SKIP() << "the system makes no links";
    fs::remove(world.root / "no link");
    expect_answers(TOOL_TEST_DATA "/links.txt", answer);
}

TEST(FolderCopies, FailWhereTheyWouldLeaveOutOrLoseSomething) {
    const World world;
    const auto answer = [&](const char* call, Fields paths) { return world.folder_answer(call, paths, 0); };
    fs::create_directories(world.root / u8"in/é/src/sub");
    fs::current_path(world.root / u8"in/é");  // which no path in code page 932 can name
    const auto copied = [](CString from, CString to) { return CTools::DirectoryCopy(from, to); };
    for (const char* below : {"./src/sub", "./src"}) EXPECT_EQ(copied("src", below), 0) << below;
    for (const char* below : {"x", "../x", "src/x"}) EXPECT_EQ(copied("..", below), 0) << below;
    EXPECT_EQ(copied("src", "new/dst"), 1);
    EXPECT_EQ(answer("DirectoryCopy", {"in", "out"}), "0");
    EXPECT_EQ(answer("CopyFolderFile", {"out/", "in/"}), "1");  // without folders nothing is left out
    fs::create_directory(world.root / "case");
    for (const auto* name : {u8"in/é.txt", u8"case/A", u8"case/a"}) std::ofstream(world.root / name) << "a";
    EXPECT_EQ(answer("CopyFolderFile", {"out/", "in/"}), "0");
    const auto folds = to_string(fs::equivalent(world.root / "case/A", world.root / "case/a"));
    EXPECT_EQ(answer("DirectoryCopy", {"case", "copy"}), folds);
}

TEST(IsNum, AgreesWithReadingAndPrinting) {
    std::vector<string> texts = {"", string(400, '9'), string(310, '1') + ".5"};
    for (std::size_t i = 0; i < texts.size(); ++i)
        for (const char c : string("-+.019 e"))
            if (texts[i].size() < 5) texts.push_back(texts[i] + c);
    std::mt19937_64 random(4);
    for (int i = 0; i < 100000; ++i) {
        texts.push_back(to_string(random() >> random() % 64));
        texts.back().insert(texts.back().size() - std::min<std::size_t>(texts.back().size(), random() % 8), ".");
    }
    for (const string& text : texts) {
        const string trimmed = text.substr(0, text.find_last_not_of(' ') + 1);
        const bool same = tool::print_fixed(tool::read_double(trimmed), 6).starts_with(trimmed);
        ASSERT_EQ(CTools::IsNum(text.c_str()), same) << "'" << text << "'";
    }
}

TEST(IndexCode, IsReadBackExceptForTheTwentySixthLetter) {
    for (const int end : {62, 620, 6200, 62000})
        for (int value = 0; value < end; ++value) {
            const CString code = CTools::TransIndex(value, static_cast<int>(to_string(end).size()) - 1);
            ASSERT_EQ(CTools::ConvIndex(code) == value, code[0] != '`') << code;
        }
}

}  // namespace
