#include "Framework.h"

#include <cstring>
#include <deque>
#include <functional>

#include "CodePage.h"

#include "gtest/gtest.h"

namespace {

TEST(CString, KnowsDoubleByteCharacters) {
    const CString path = "C:\\\x95\x5C\\\x83\x5C.txt";  // C:\表\ソ.txt
    EXPECT_EQ(path.Find('\\'), 2);
    EXPECT_EQ(path.Find('\\', 3), 5);
    EXPECT_EQ(path.ReverseFind('\\'), 5);
    CString text = path;
    EXPECT_EQ(text.Replace('\\', '/'), 2);
    EXPECT_STREQ(text, "C:/\x95\x5C/\x83\x5C.txt");
    text = "\x83\x41 \x81\x40 ";  // the trail byte of ア is "A", that of the wide blank "@"
    EXPECT_STREQ(text.MakeLower(), "\x83\x41 \x81\x40 ");
    EXPECT_STREQ(CString(text).TrimRight("@ "), "\x83\x41 \x81\x40");
    EXPECT_STREQ(CString(text).TrimRight("\x81\x40 "), "\x83\x41");
    EXPECT_EQ(text.FindOneOf("A@"), -1);
}

TEST(CString, CutsPositionsOutsideTheText) {
    const CString text = "abc";
    EXPECT_STREQ(text.Left(-1), "");
    EXPECT_STREQ(text.Left(9), "abc");
    EXPECT_STREQ(text.Mid(-5, 2), "ab");
    EXPECT_STREQ(text.Mid(2, 2147483647), "c");
    EXPECT_STREQ(text.Mid(7), "");
    EXPECT_STREQ(text.Right(2), "bc");
    EXPECT_EQ(text.Find("c", 4), -1);
    EXPECT_EQ(text.Find("", 3), 3);
    EXPECT_EQ(text.GetAt(3), '\0');
    EXPECT_TRUE(text < "abd" && text > "abb" && text <= "abc");
    EXPECT_THROW(
        try { text.GetAt(4); } catch (CException* e) {
            e->Delete();
            throw 1;
        },
        int);
}

TEST(CString, BuildsFromItsOwnText) {
    CString text = "ab";
    text = static_cast<LPCSTR>(text) + 1;
    EXPECT_STREQ(text, "b");
    text += text;
    text.AppendFormat("%s-%d", static_cast<LPCSTR>(text), 7);
    EXPECT_STREQ(text, "bbbb-7");
    std::strcpy(text.GetBuffer(20), "short");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 5);
    EXPECT_TRUE("a" + text == "ashort" && text < "t" && text != "s");
}

TEST(CStringArray, ThrowsOutsideTheList) {
    CStringArray list;
    list.Add("a");
    list.InsertAt(3, "d");
    EXPECT_EQ(list.GetSize(), 4);
    EXPECT_EQ(list.Append(list), 4);
    list.SetAt(0, list[3]);
    EXPECT_STREQ(list[0], "d");
    for (const INT_PTR index : {INT_PTR{-1}, INT_PTR{8}, INT_PTR{1} << 40}) {
        const std::function<void()> calls[] = {[&] { list.GetAt(index); }, [&] { list[index] = "x"; },
                                               [&] { list.RemoveAt(index); }};
        for (const auto& call : calls) {
            try {
                call();
                ADD_FAILURE() << index;
            } catch (CInvalidArgException* exception) {
                exception->Delete();
            }
        }
    }
    EXPECT_EQ(list.GetSize(), 8);
}

TEST(CWnd, IsADialogInMemory) {
    CWnd dialog;
    dialog.AddField(1)->SetWindowText("  -12 years");
    dialog.AddField(2);
    const struct {
        const char* text;
        UINT value;
        BOOL translated, is_signed;
    } cases[] = {
        {"007", 7, TRUE, TRUE},
        {"", 0, FALSE, TRUE},
        {"x1", 0, FALSE, TRUE},
        {"2147483648", 0, FALSE, TRUE},
        {"2147483648", 2147483648u, TRUE, FALSE},
        {"-1", 0, FALSE, FALSE},
    };
    BOOL translated = FALSE;
    EXPECT_EQ(static_cast<int>(dialog.GetDlgItemInt(1, &translated)), -12);
    EXPECT_TRUE(translated);
    for (const auto& c : cases) {
        dialog.SetDlgItemText(2, c.text);
        EXPECT_EQ(dialog.GetDlgItemInt(2, &translated, c.is_signed), c.value) << c.text;
        EXPECT_EQ(translated, c.translated) << c.text;
    }
    dialog.SetDlgItemInt(2, static_cast<UINT>(-3));
    char text[2];
    EXPECT_EQ(dialog.GetDlgItemText(2, text, 2), 1);
    EXPECT_STREQ(text, "-");
    dialog.SetDlgItemText(99, "nowhere");
    EXPECT_EQ(dialog.GetDlgItem(99), nullptr);
    EXPECT_FALSE(dialog.GetDlgItem(2)->EnableWindow(FALSE));
    EXPECT_TRUE(dialog.GetDlgItem(2)->EnableWindow());
}

TEST(CWnd, HandlesOutliveTheirWindowsHarmlessly) {
    HWND old;
    {
        const CWnd window;
        old = window.GetSafeHwnd();
        EXPECT_EQ(CWnd::FromHandle(old), &window);
    }
    const CWnd next;
    EXPECT_EQ(CWnd::FromHandle(old), nullptr);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
}

TEST(CWnd, RemembersItsPlacement) {
    CWnd window;
    WINDOWPLACEMENT placement{sizeof(WINDOWPLACEMENT), 0, SW_SHOWMAXIMIZED, {0, 0}, {0, 0}, {1, 2, 3, 4}};
    EXPECT_TRUE(window.SetWindowPlacement(&placement));
    EXPECT_TRUE(window.IsZoomed());
    EXPECT_TRUE(window.ShowWindow(SW_HIDE));
    EXPECT_FALSE(window.ShowWindow(SW_SHOWNORMAL));
    EXPECT_TRUE(window.GetWindowPlacement(&placement));
    EXPECT_EQ(placement.showCmd, static_cast<UINT>(SW_SHOWNORMAL));
    const CRect place(placement.rcNormalPosition);
    EXPECT_EQ(place, CRect(1, 2, 3, 4));
    for (const CRect& r : {CRect(0, 2, 3, 4), CRect(1, 0, 3, 4), CRect(1, 2, 0, 4), CRect(1, 2, 3, 2)})
        EXPECT_TRUE(place != r && r.IsRectEmpty() == (r.right == 0 || r.bottom == 2));
}

TEST(CComboBox, AnswersWithCbErrOutsideItsList) {
    CWnd dialog;
    dialog.AddComboBox(5);
    auto* const box = static_cast<CComboBox*>(dialog.GetDlgItem(5));
    EXPECT_EQ(box->AddString("first"), 0);
    EXPECT_EQ(box->AddString("\x95\x5C"), 1);
    EXPECT_EQ(box->SetItemData(1, 42), CB_OKAY);
    EXPECT_EQ(box->SetCurSel(1), 1);
    for (const int index : {-1, 2}) {
        char text[1];
        EXPECT_EQ(box->GetLBText(index, text), CB_ERR);
        EXPECT_EQ(box->GetLBTextLen(index), CB_ERR);
        EXPECT_EQ(box->SetItemData(index, 1), CB_ERR);
        EXPECT_EQ(box->GetItemData(index), static_cast<DWORD_PTR>(CB_ERR));
    }
    EXPECT_EQ(box->SetCurSel(2), CB_ERR);
    EXPECT_EQ(box->GetCurSel(), 1);
    EXPECT_EQ(box->GetItemData(1), 42u);
    char text[3];
    EXPECT_EQ(box->GetLBText(1, text), 2);
    box->ResetContent();
    EXPECT_EQ(box->GetCurSel(), CB_ERR);
}

CString code_page(const char* utf8) {
    CString text;
    EXPECT_TRUE(CodePage932FromUtf8(utf8, &text));
    return text;
}

TEST(MapKana, TurnsHiraganaIntoItsOtherForms) {
    const struct {
        const char* from;
        DWORD flags;
        const char* to;
    } cases[] = {
        {"さとう　がぱっヴ漢A", LCMAP_KATAKANA | LCMAP_FULLWIDTH, "サトウ　ガパッヴ漢Ａ"},
        {"さとう　がぱっー漢", LCMAP_KATAKANA | LCMAP_HALFWIDTH, "ｻﾄｳ ｶﾞﾊﾟｯｰ漢"},
        {"ｻﾄｳ ｶﾞﾊﾟﾜﾞﾞ", LCMAP_HIRAGANA | LCMAP_FULLWIDTH, "さとう　がぱわ゛゛"},
        {"サトウヴヶ", LCMAP_HIRAGANA, "さとうヴヶ"},
        {"さ、「Ａ」", LCMAP_HALFWIDTH, "さ､｢A｣"},
    };
    for (const auto& c : cases) EXPECT_EQ(Utf8FromCodePage932(MapKana(code_page(c.from), c.flags)), c.to);
    EXPECT_STREQ(MapKana("\x85\x40\x82\xA0\x83", LCMAP_KATAKANA), "\x85\x40\x83\x41\x83");  // no character: bytes stay
}

TEST(MapKana, ComesBackFromHalfWidthForEveryKana) {
    for (char trail = 0x41; trail < 0x7F; ++trail) {
        const CString kana = CString('\x83') + trail;
        EXPECT_STREQ(MapKana(MapKana(kana, LCMAP_HALFWIDTH), LCMAP_FULLWIDTH), kana);
    }
}

#if !defined(_WIN32)  // where the system has its own

TEST(Messages, ComeFromTheQueueOfTheThread) {
    struct Queue : CMessageQueue {
        std::deque<UINT> waiting{7, 8};
        std::vector<UINT> dispatched;
        BOOL Peek(MSG* message, BOOL remove) override {
            if (waiting.empty()) return FALSE;
            message->message = waiting.front();
            if (remove) waiting.pop_front();
            return TRUE;
        }
        void Dispatch(const MSG& message) override { dispatched.push_back(message.message); }
    } queue;
    MSG message{};
    EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(SetMessageQueue(&queue), nullptr);
    EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    EXPECT_EQ(SetMessageQueue(nullptr), &queue);
    EXPECT_EQ(queue.dispatched, (std::vector<UINT>{7, 8}));
}

TEST(Screen, IsTheOneThatWasSet) {
    EXPECT_EQ(GetSystemMetrics(SM_CXVIRTUALSCREEN), 1920);
    SetVirtualScreen({-100, 0, 900, 500});
    EXPECT_EQ(GetSystemMetrics(SM_XVIRTUALSCREEN), -100);
    EXPECT_EQ(GetSystemMetrics(SM_CXVIRTUALSCREEN), 1000);
    EXPECT_EQ(GetSystemMetrics(0), 0);
    SetVirtualScreen({0, 0, 1920, 1080});
}

#endif

}  // namespace
