#include <gtest/gtest.h>

#include "FolderPicker.h"
#include "Tools.h"
#include "framework/exceptions.h"
#include "framework/files.h"
#include "framework/system.h"
#include "util/fake_host.h"

namespace {

using std::string;

#if defined(_WIN32)

TEST(Messages, AreDispatchedUntilNoneIsLeft) {
    static WPARAM handled = 0;
    const WNDPROC add = [](HWND window, UINT message, WPARAM value, LPARAM more) -> LRESULT {
        if (message == WM_APP) handled += value;
        return DefWindowProcA(window, message, value, more);
    };
    const HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(add));
    CTools::MessageProcessing();  // none waits
    for (const WPARAM value : {1, 2}) PostMessageA(window, WM_APP, value, 0);
    CTools::MessageProcessing();
    EXPECT_EQ(handled, 3u);
    DestroyWindow(window);
}

#else

TEST(Messages, AreDispatchedUntilNoneIsLeft) {
    struct Queue : CMessageQueue {
        UINT waiting = 2;
        string log;
        BOOL Peek(MSG* message, BOOL) override { return (message->message = waiting) > 0; }
        BOOL Translate(const MSG&) override { return log += 't', TRUE; }
        void Dispatch(const MSG& message) override { log += std::to_string(message.message), --waiting; }
    } queue;
    CTools::MessageProcessing();  // no queue, no wait
    SetMessageQueue(&queue);
    CTools::MessageProcessing();
    SetMessageQueue(nullptr);
    EXPECT_EQ(queue.log, "t2t1");
}

#endif

TEST(WriteFile, CallsEveryFailureAFullDisk) {
    struct FailingFile : CFile {
        int kind = 0;
        string written;
        void Write(const void* data, UINT count) override {
            if (kind == 1) AfxThrowFileException(CFileException::accessDenied);
            if (kind == 2) AfxThrowInvalidArgException();
            if (kind == 3) throw std::bad_alloc();
            if (kind == 4) throw 4;
            written.append(static_cast<const char*>(data), count);
        }
    } file;
    FakeHost host;
    string bytes("b\0c", 3);
    EXPECT_EQ(CTools::WriteFile(&file, "text") + CTools::WriteFileB(&file, bytes.data(), 3), 2);
    EXPECT_EQ(file.written, "text" + bytes);
    for (file.kind = 1; file.kind <= 4; ++file.kind)
        EXPECT_EQ(CTools::WriteFile(&file, "x") + CTools::WriteFileB(&file, bytes.data(), 1), 0);
    EXPECT_EQ(host.boxes, decltype(host.boxes)(8, {"Disk Full", MB_OK}));
    SetLastError(2);
    CTools::GetLastErrMessage();
    EXPECT_EQ(host.boxes.back(), std::pair(string(GetErrorText(2)), UINT{MB_ICONSTOP}));
}

TEST(BrowseFolder, WritesOnlyAChosenFolderThatFits) {
    struct Picker : CFolderPicker {
        string start, answer;
        BOOL Pick(CWnd*, LPCSTR, LPCSTR from, UINT, CString* chosen) override {
            return start = from, *chosen = answer.c_str(), !answer.empty();
        }
    } picker;
    for (const auto& [old, start] : {std::pair("C:\\start\\", "C:\\start"), {"C:\\", ""}})
        for (const std::size_t length : {0, 1, 259, 260}) {
            CString text = old;
            char path[260] = "C:\\";
            picker.answer = string(length, 'x');
            EXPECT_EQ(CTools::BrowseFolder(nullptr, text, "", 0), 0);  // no picker
            SetFolderPicker(&picker);
            EXPECT_EQ(CTools::BrowseFolder(nullptr, text, "", 0), length > 0);
            EXPECT_EQ(picker.start, start);
            EXPECT_EQ(CTools::BrowseFolder(nullptr, path, "", 0), length > 0 && length < 260);
            EXPECT_EQ(SetFolderPicker(nullptr), &picker);
            EXPECT_EQ(text.View(), length > 0 ? picker.answer : old);
            EXPECT_EQ(path, length > 0 && length < 260 ? picker.answer : "C:\\");
        }
}

TEST(NullPointers, CountAsEmpty) {
    CTools::ImmSet(nullptr, 1, 0), CTools::LoadWindowPos(nullptr, nullptr), CTools::Debug(nullptr, 0);
    EXPECT_EQ(CTools::GetFurigana(nullptr, 0), "");
    EXPECT_EQ(CTools::IsNull(nullptr, 0) + CTools::IsNum(nullptr) + CTools::ExistFile(nullptr), 2);
}

}  // namespace
