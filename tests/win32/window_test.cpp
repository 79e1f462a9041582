#include <gtest/gtest.h>

#include <string>

#include "CephCalc.h"
#include "Tools.h"
#include "framework/input_method.h"
#include "util/fake_host.h"

namespace {

HWND made(LPCSTR type, DWORD style, HWND parent = nullptr, int id = 0) {
    return CreateWindowExA(0, type, "", style, 10, 10, 300, 200, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
}

// A dialog of the system's with two fields and a box.
class SystemDialog : public testing::Test {
 protected:
    const HWND window_ = made("STATIC", WS_OVERLAPPEDWINDOW);
    const HWND year_ = made("EDIT", WS_CHILD, window_, 1), month_ = made("EDIT", WS_CHILD, window_, 2);
    const HWND box_ = made("COMBOBOX", WS_CHILD | CBS_DROPDOWNLIST, window_, 3);
    CWnd dialog_;

    void SetUp() override { ASSERT_TRUE(dialog_.Attach(window_)); }
    void TearDown() override {
        dialog_.Detach();
        DestroyWindow(window_);
    }
};

TEST_F(SystemDialog, ReadsAndWritesItsFields) {
    CTools::SetNengappi(&dialog_, 1, 2, 0, "20240305");
    EXPECT_EQ(GetDlgItemInt(window_, 1, nullptr, FALSE), 2024u);
    EXPECT_EQ(GetDlgItemInt(window_, 2, nullptr, FALSE), 3u);
    SetWindowTextW(month_, L"11");
    EXPECT_STREQ(CTools::GetNengappi(&dialog_, 1, 2, 0), "202411");

    dialog_.SetDlgItemText(1, "\x95\x5C\x83\x5C");
    wchar_t shown[8];
    GetWindowTextW(year_, shown, 8);
    EXPECT_EQ(std::wstring(shown), L"表ソ");
    SetWindowTextW(year_, L"表é\u0E01");
    char text[3];
    EXPECT_EQ(dialog_.GetDlgItemText(1, text, 3), 2);
    EXPECT_STREQ(text, "\x95\x5C");
    CString whole;
    EXPECT_EQ(dialog_.GetDlgItemText(1, whole), 4);
    EXPECT_STREQ(whole,
                 "\x95\x5C"
                 "e?");
    EXPECT_EQ(dialog_.GetDlgItem(99), nullptr);
    EXPECT_FALSE(dialog_.GetDlgItem(1)->EnableWindow(FALSE));
    EXPECT_FALSE(IsWindowEnabled(year_));
}

TEST_F(SystemDialog, FillsItsComboBox) {
    auto* const box = static_cast<CComboBox*>(dialog_.GetDlgItem(3));
    EXPECT_EQ(box->AddString("first"), 0);
    EXPECT_EQ(box->AddString("\x95\x5C"), 1);
    EXPECT_EQ(box->SetItemData(1, static_cast<DWORD_PTR>(-1)), CB_OKAY);
    EXPECT_EQ(box->GetItemData(0), 0u);
    for (const int index : {-1, 2}) {
        char text[1];
        EXPECT_EQ(box->GetLBText(index, text), CB_ERR);
        EXPECT_EQ(box->GetLBTextLen(index), CB_ERR);
        EXPECT_EQ(box->SetItemData(index, 1), CB_ERR);
        EXPECT_EQ(box->GetItemData(index), static_cast<DWORD_PTR>(CB_ERR));
    }
    EXPECT_EQ(box->SetCurSel(1), 1);
    EXPECT_EQ(SendMessageW(box_, CB_GETCURSEL, 0, 0), 1);
    char text[3];
    EXPECT_EQ(box->GetLBTextLen(1), 2);
    EXPECT_EQ(box->GetLBText(1, text), 2);
    EXPECT_STREQ(text, "\x95\x5C");
    box->ResetContent();
    EXPECT_EQ(SendMessageW(box_, CB_GETCOUNT, 0, 0), 0);
    EXPECT_EQ(box->GetCurSel(), CB_ERR);
}

TEST_F(SystemDialog, ComesBackWhereItWas) {
    FakeHost host;
    MoveWindow(window_, 30, 40, 500, 300, FALSE);
    WINDOWPLACEMENT there{}, back{};
    there.length = back.length = sizeof there;
    GetWindowPlacement(window_, &there);
    CTools::SaveWindowPos(&dialog_, "w");
    EXPECT_EQ(host.profile["ENV/wPOS_CX"], 500);
    EXPECT_EQ(host.profile["ENV/wMAXWINDOW"], 0);
    MoveWindow(window_, 0, 0, 100, 100, FALSE);
    CTools::LoadWindowPos(&dialog_, "w");
    GetWindowPlacement(window_, &back);
    EXPECT_EQ(CRect(back.rcNormalPosition), CRect(there.rcNormalPosition));
    EXPECT_TRUE(dialog_.IsWindowVisible());
    host.profile["ENV/wMAXWINDOW"] = 1;
    CTools::LoadWindowPos(&dialog_, "w");
    EXPECT_TRUE(IsZoomed(window_));
    CTools::SaveWindowPos(&dialog_, "w");
    EXPECT_EQ(host.profile["ENV/wMAXWINDOW"], 1);
}

TEST_F(SystemDialog, OpensItsInputMethod) {
    const HIMC context = ImmCreateContext();
    if (!context) GTEST_SKIP() << "no input method here";
    ImmAssociateContext(year_, context);
    DWORD conversion = 0, sentence = 0;
    ImmSetConversionStatus(context, IME_CMODE_ROMAN, IME_SMODE_PHRASEPREDICT);
    CTools::ImmSet(year_, 1, 1);
    EXPECT_TRUE(ImmGetOpenStatus(context));
    ImmGetConversionStatus(context, &conversion, &sentence);
    EXPECT_EQ(conversion,
              static_cast<DWORD>(IME_CMODE_ROMAN | IME_CMODE_NATIVE | IME_CMODE_KATAKANA | IME_CMODE_FULLSHAPE));
    EXPECT_EQ(sentence, static_cast<DWORD>(IME_SMODE_PHRASEPREDICT));
    CTools::ImmSet(year_, 0, 0);
    EXPECT_FALSE(ImmGetOpenStatus(context));
    EXPECT_STREQ(CTools::GetFurigana(dialog_.GetDlgItem(1), 0), "");
    ImmAssociateContext(year_, nullptr);
    ImmDestroyContext(context);
}

TEST_F(SystemDialog, HandlesOutliveTheirWindowsHarmlessly) {
    CWnd* const field = CWnd::FromHandle(year_);
    EXPECT_EQ(dialog_.GetDlgItem(1), field);
    EXPECT_EQ(CWnd::FromHandle(window_), &dialog_);
    DestroyWindow(year_);
    EXPECT_EQ(CWnd::FromHandle(year_), nullptr);
    EXPECT_EQ(dialog_.GetDlgItem(1), nullptr);
    EXPECT_FALSE(dialog_.Attach(year_));
    EXPECT_EQ(dialog_.GetSafeHwnd(), window_);
}

}  // namespace
