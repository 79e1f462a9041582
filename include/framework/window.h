// CWnd and CComboBox: a window of the system's that a host attaches (on Windows), else a window in memory: a host or a
// test creates a dialog as a CWnd, adds its fields and reads them back. A window and its fields belong to one thread at
// a time.
#pragma once

#include <memory>
#include <vector>

#include "framework/export.h"
#include "framework/plane.h"
#include "framework/scalars.h"
#include "framework/text.h"

#if !defined(_WIN32)
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
#endif

class CComboBox;
class CInputMethod;

namespace tool {
class WindowBody;
}

class TOOL_API CWnd {
 public:
    CWnd();  // in memory
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    HWND m_hWnd;
    HWND GetSafeHwnd() const { return m_hWnd; }
    // Null for a handle that is null or whose window is gone. On Windows a window of the system's that nothing is
    // attached to gets an object of the calling thread's for as long as the window lives.
    static CWnd* FromHandle(HWND wnd);

#if defined(_WIN32)
    // From now on, until Detach, this is the system's window, which stays its maker's. FALSE when there is no such
    // window.
    BOOL Attach(HWND wnd);
    HWND Detach();  // back in memory; null when nothing was attached
#endif

    // Additions: a field of this dialog in memory, owned by it. A second field of the same id is never found.
    CWnd* AddField(UINT id);
    CComboBox* AddComboBox(UINT id);
    // Addition: the input method that the host or a test attaches. Not owned. Null (the start) is the system's own for
    // a window of the system's, none for one in memory.
    void SetInputMethod(CInputMethod* method) {
        input_method_ = method;
    }
    CInputMethod* GetInputMethod() const;

    int GetDlgCtrlID() const;
    // Null when there is none. One of the system's may be cast to CComboBox*.
    CWnd* GetDlgItem(int id) const;
    // A missing field reads as "" and 0, and is passed over in writing.
    int GetDlgItemText(int id, LPSTR text, int size) const;  // at most size - 1 bytes and a NUL; the length
    int GetDlgItemText(int id, CString& text) const;
    void SetDlgItemText(int id, LPCSTR text);
    // The number that the text begins with; 0 and *translated FALSE without one, or when it leaves 32 bits.
    UINT GetDlgItemInt(int id, BOOL* translated = nullptr, BOOL isSigned = TRUE) const;
    // Decimal, with isSigned as 32 bits with a sign.
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);

    int GetWindowText(LPSTR text, int size) const;
    void GetWindowText(CString& text) const;
    int GetWindowTextLength() const;  // bytes
    void SetWindowText(LPCSTR text);

    BOOL EnableWindow(BOOL enable = TRUE);  // non-zero when it was disabled before
    BOOL IsWindowEnabled() const;
    BOOL ShowWindow(int showCmd);  // non-zero when it was visible before
    BOOL IsWindowVisible() const;
    BOOL IsZoomed() const;
    BOOL IsIconic() const;
    BOOL GetWindowPlacement(WINDOWPLACEMENT* placement) const;
    BOOL SetWindowPlacement(const WINDOWPLACEMENT* placement);

 protected:
    explicit CWnd(std::unique_ptr<tool::WindowBody> body);
    std::unique_ptr<tool::WindowBody> body_;

 private:
    CInputMethod* input_method_ = nullptr;
    std::vector<std::unique_ptr<CWnd>> fields_;
};

#if !defined(_WIN32)
enum { CB_OKAY = 0, CB_ERR = -1 };
#endif

// Items in the order added (on Windows as the box's own style says). An index outside the list gives CB_ERR and changes
// nothing.
class TOOL_API CComboBox : public CWnd {
 public:
    CComboBox();
    ~CComboBox() override;

    int AddString(LPCSTR text);  // its index
    void ResetContent();
    int GetCount() const;
    int GetLBTextLen(int index) const;
    int GetLBText(int index, LPSTR text) const;  // needs GetLBTextLen + 1 bytes; returns the length
    void GetLBText(int index, CString& text) const;
    int SetItemData(int index, DWORD_PTR data);
    DWORD_PTR GetItemData(int index) const;  // 0 until set; CB_ERR as DWORD_PTR outside the list
    int SetCurSel(int index);                // -1 selects nothing and gives CB_ERR
    int GetCurSel() const;

 private:
    friend class CWnd;
    explicit CComboBox(std::unique_ptr<tool::WindowBody> body);
};
