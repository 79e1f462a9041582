// A window of the system's.
#pragma once

#include "framework/input_method.h"
#include "platform/framework/window_body.h"

namespace tool::win32 {

// The input method of a window of the system's, asked and told through the system.
class SystemInputMethod : public CInputMethod {
 public:
    explicit SystemInputMethod(HWND window) : window_(window) {}
    BOOL GetOpenStatus() const override;
    void SetOpenStatus(BOOL open) override;
    DWORD GetConversion() const override;
    void SetConversion(DWORD conversion) override;
    CString GetReading() const override;

 private:
    HWND window_;
};

class SystemWindow : public WindowBody {
 public:
    explicit SystemWindow(HWND window) : window_(window), input_method_(window) {}

    int id() const override { return ::GetDlgCtrlID(window_); }
    CWnd* field(int id) const override;
    std::string text() const override;
    void set_text(const char* text) override;
    BOOL enable(BOOL enable) override { return ::EnableWindow(window_, enable); }
    BOOL is_enabled() const override { return ::IsWindowEnabled(window_); }
    BOOL show(int command) override { return ::ShowWindow(window_, command); }
    BOOL is_visible() const override { return ::IsWindowVisible(window_); }
    BOOL is_zoomed() const override { return ::IsZoomed(window_); }
    BOOL is_iconic() const override { return ::IsIconic(window_); }
    BOOL placement(WINDOWPLACEMENT* placement) const override { return ::GetWindowPlacement(window_, placement); }
    BOOL set_placement(const WINDOWPLACEMENT* placement) override { return ::SetWindowPlacement(window_, placement); }
    CInputMethod* input_method() override;

    int add_item(const char* text) override;
    void remove_items() override { send(CB_RESETCONTENT); }
    int item_count() const override { return static_cast<int>(send(CB_GETCOUNT)); }
    std::optional<std::string> item_text(int index) const override;
    int set_item_data(int index, DWORD_PTR data) override;
    DWORD_PTR item_data(int index) const override;
    int select_item(int index) override { return static_cast<int>(send(CB_SETCURSEL, index)); }
    int selected_item() const override { return static_cast<int>(send(CB_GETCURSEL)); }

 private:
    LRESULT send(UINT message, int index = 0, LPARAM value = 0) const {
        return SendMessageW(window_, message, static_cast<WPARAM>(index), value);
    }

    HWND window_;
    SystemInputMethod input_method_;
};

}  // namespace tool::win32
