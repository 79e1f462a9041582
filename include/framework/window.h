// CWnd and CComboBox as in-memory models: a host or a test creates a dialog as a CWnd, adds its fields and reads them
// back. A window and its fields belong to one thread at a time.
#pragma once

#include <memory>
#include <vector>

#include "framework/export.h"
#include "framework/plane.h"
#include "framework/scalars.h"
#include "framework/text.h"

enum {
    SW_HIDE = 0,
    SW_SHOWNORMAL = 1,
    SW_NORMAL = 1,
    SW_SHOWMINIMIZED = 2,
    SW_SHOWMAXIMIZED = 3,
    SW_MAXIMIZE = 3,
    SW_SHOWNOACTIVATE = 4,
    SW_SHOW = 5,
    SW_MINIMIZE = 6,
    SW_RESTORE = 9
};

struct WINDOWPLACEMENT {
    UINT length;
    UINT flags;
    UINT showCmd;
    POINT ptMinPosition;
    POINT ptMaxPosition;
    RECT rcNormalPosition;
};

class CComboBox;
class CInputMethod;

class TOOL_API CWnd {
 public:
    CWnd();
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd;
    HWND GetSafeHwnd() const { return m_hWnd; }
    // Null for a handle that is null or whose window is gone.
    static CWnd* FromHandle(HWND wnd);

    // Additions: a field of this dialog, owned by it. A second field of the same id is never found.
    CWnd* AddField(UINT id);
    CComboBox* AddComboBox(UINT id);
    // Addition: the input method that the host or a test attaches; null (the start) is a window without one. Not owned.
    void SetInputMethod(CInputMethod* method) { input_method_ = method; }
    CInputMethod* GetInputMethod() const { return input_method_; }

    int GetDlgCtrlID() const { return id_; }
    CWnd* GetDlgItem(int id) const;  // null when there is none
    // A missing field reads as "" and 0, and is passed over in writing.
    int GetDlgItemText(int id, LPSTR text, int size) const;  // at most size - 1 bytes and a NUL; the length
    int GetDlgItemText(int id, CString& text) const;
    void SetDlgItemText(int id, LPCSTR text);
    // The number that the text begins with; 0 and *translated FALSE without one, or when it leaves 32 bits.
    UINT GetDlgItemInt(int id, BOOL* translated = nullptr, BOOL isSigned = TRUE) const;
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);

    int GetWindowText(LPSTR text, int size) const;
    void GetWindowText(CString& text) const { text = text_; }
    int GetWindowTextLength() const { return text_.GetLength(); }
    void SetWindowText(LPCSTR text) { text_ = text; }

    BOOL EnableWindow(BOOL enable = TRUE);  // non-zero when it was disabled before
    BOOL IsWindowEnabled() const { return enabled_; }
    BOOL ShowWindow(int showCmd);  // non-zero when it was visible before
    BOOL IsWindowVisible() const { return placement_.showCmd != SW_HIDE; }
    BOOL IsZoomed() const { return placement_.showCmd == SW_SHOWMAXIMIZED; }
    BOOL IsIconic() const { return placement_.showCmd == SW_SHOWMINIMIZED || placement_.showCmd == SW_MINIMIZE; }
    BOOL GetWindowPlacement(WINDOWPLACEMENT* placement) const;
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* placement);

 private:
    int id_ = 0;
    CString text_;
    BOOL enabled_ = TRUE;
    WINDOWPLACEMENT placement_;
    CInputMethod* input_method_ = nullptr;
    std::vector<std::unique_ptr<CWnd>> fields_;
};

enum { CB_OKAY = 0, CB_ERR = -1 };

// Items in the order added. An index outside the list gives CB_ERR and changes nothing.
class TOOL_API CComboBox : public CWnd {
 public:
    ~CComboBox() override;

    int AddString(LPCSTR text);  // its index
    void ResetContent();
    int GetCount() const { return static_cast<int>(items_.size()); }
    int GetLBTextLen(int index) const;
    int GetLBText(int index, LPSTR text) const;  // needs GetLBTextLen + 1 bytes; returns the length
    void GetLBText(int index, CString& text) const;
    int SetItemData(int index, DWORD_PTR data);
    DWORD_PTR GetItemData(int index) const;  // 0 until set; CB_ERR as DWORD_PTR outside the list
    int SetCurSel(int index);                // -1 selects nothing and gives CB_ERR
    int GetCurSel() const { return selected_; }

 private:
    struct Item {
        CString text;
        DWORD_PTR data = 0;
    };
    const Item* item(int index) const;

    std::vector<Item> items_;
    int selected_ = CB_ERR;
};
