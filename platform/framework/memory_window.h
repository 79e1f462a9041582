// A window in memory: what is written is read back.
#pragma once

#include <vector>

#include "platform/framework/window_body.h"

namespace tool {

class MemoryWindow : public WindowBody {
 public:
    explicit MemoryWindow(int id = 0) : id_(id) {}

    int id() const override { return id_; }
    CWnd* field(int) const override { return nullptr; }
    std::string text() const override { return text_; }
    void set_text(const char* text) override;
    BOOL enable(BOOL enable) override;
    BOOL is_enabled() const override { return enabled_; }
    BOOL show(int command) override;
    BOOL is_visible() const override { return placement_.showCmd != SW_HIDE; }
    BOOL is_zoomed() const override { return placement_.showCmd == SW_SHOWMAXIMIZED; }
    BOOL is_iconic() const override;
    BOOL placement(WINDOWPLACEMENT* placement) const override;
    BOOL set_placement(const WINDOWPLACEMENT* placement) override;
    CInputMethod* input_method() override { return nullptr; }

    int add_item(const char* text) override;
    void remove_items() override;
    int item_count() const override { return static_cast<int>(items_.size()); }
    std::optional<std::string> item_text(int index) const override;
    int set_item_data(int index, DWORD_PTR data) override;
    DWORD_PTR item_data(int index) const override;
    int select_item(int index) override;
    int selected_item() const override { return selected_; }

 private:
    struct Item {
        std::string text;
        DWORD_PTR data = 0;
    };
    bool has_item(int index) const { return index >= 0 && index < item_count(); }
    const Item& item(int index) const { return items_[static_cast<std::size_t>(index)]; }

    int id_;
    std::string text_;
    BOOL enabled_ = TRUE;
    WINDOWPLACEMENT placement_ = {sizeof(WINDOWPLACEMENT), 0, SW_SHOWNORMAL, {-1, -1}, {-1, -1}, {0, 0, 0, 0}};
    std::vector<Item> items_;
    int selected_ = CB_ERR;
};

}  // namespace tool
