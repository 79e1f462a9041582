#include "platform/framework/memory_window.h"

#include <utility>

#include "platform/framework/caller_buffer.h"

namespace tool {

void MemoryWindow::set_text(const char* text) {
    text_ = view_or_empty(text);
}

BOOL MemoryWindow::enable(BOOL enable) {
    return !std::exchange(enabled_, enable != FALSE);
}

BOOL MemoryWindow::show(int command) {
    const BOOL visible = is_visible();
    placement_.showCmd = static_cast<UINT>(command);
    return visible;
}

BOOL MemoryWindow::is_iconic() const {
    return placement_.showCmd == SW_SHOWMINIMIZED || placement_.showCmd == SW_MINIMIZE;
}

BOOL MemoryWindow::placement(WINDOWPLACEMENT* placement) const {
    if (!placement) return FALSE;
    *placement = placement_;
    return TRUE;
}

BOOL MemoryWindow::set_placement(const WINDOWPLACEMENT* placement) {
    if (!placement) return FALSE;
    placement_ = *placement;
    placement_.length = sizeof(WINDOWPLACEMENT);
    return TRUE;
}

int MemoryWindow::add_item(const char* text) {
    items_.push_back({std::string(view_or_empty(text)), 0});
    return item_count() - 1;
}

void MemoryWindow::remove_items() {
    items_.clear();
    selected_ = CB_ERR;
}

std::optional<std::string> MemoryWindow::item_text(int index) const {
    return has_item(index) ? std::optional(item(index).text) : std::nullopt;
}

int MemoryWindow::set_item_data(int index, DWORD_PTR data) {
    if (!has_item(index)) return CB_ERR;
    items_[static_cast<std::size_t>(index)].data = data;
    return CB_OKAY;
}

DWORD_PTR MemoryWindow::item_data(int index) const {
    return has_item(index) ? item(index).data : static_cast<DWORD_PTR>(CB_ERR);
}

int MemoryWindow::select_item(int index) {
    if (index != CB_ERR && !has_item(index)) return CB_ERR;
    selected_ = index;
    return selected_;
}

}  // namespace tool
