// What stands behind a CWnd: a window in memory or, on Windows, one of the system. The results are those of CWnd and
// CComboBox; a window that is no list has no items.
#pragma once

#include <optional>
#include <string>

#include "framework/window.h"

namespace tool {

class WindowBody {
 public:
    virtual ~WindowBody() = default;

    virtual int id() const = 0;
    virtual CWnd* field(int id) const = 0;  // of the system's; null when there is none
    virtual std::string text() const = 0;
    virtual void set_text(const char* text) = 0;
    virtual BOOL enable(BOOL enable) = 0;
    virtual BOOL is_enabled() const = 0;
    virtual BOOL show(int command) = 0;
    virtual BOOL is_visible() const = 0;
    virtual BOOL is_zoomed() const = 0;
    virtual BOOL is_iconic() const = 0;
    virtual BOOL placement(WINDOWPLACEMENT* placement) const = 0;
    virtual BOOL set_placement(const WINDOWPLACEMENT* placement) = 0;
    virtual CInputMethod* input_method() = 0;  // its own

    virtual int add_item(const char* text) = 0;
    virtual void remove_items() = 0;
    virtual int item_count() const = 0;
    virtual std::optional<std::string> item_text(int index) const = 0;
    virtual int set_item_data(int index, DWORD_PTR data) = 0;
    virtual DWORD_PTR item_data(int index) const = 0;
    virtual int select_item(int index) = 0;
    virtual int selected_item() const = 0;
};

}  // namespace tool
