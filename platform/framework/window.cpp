#include "framework/window.h"

#include <cstring>
#include <limits>
#include <mutex>
#include <unordered_map>
#include <utility>

#include "platform/framework/caller_buffer.h"
#include "platform/number_text.h"

namespace {

// Windows that live, by handle. A handle is never given twice, so that an old one finds nothing.
struct LivingWindows {
    std::mutex guard;
    std::unordered_map<HWND, CWnd*> windows;
    std::uintptr_t last_handle = 0;
};

LivingWindows& living_windows() {
    static LivingWindows living;
    return living;
}

}  // namespace

CWnd::CWnd() : placement_{sizeof(WINDOWPLACEMENT), 0, SW_SHOWNORMAL, {-1, -1}, {-1, -1}, {0, 0, 0, 0}} {
    LivingWindows& living = living_windows();
    const std::lock_guard lock(living.guard);
    m_hWnd = reinterpret_cast<HWND>(++living.last_handle);
    living.windows[m_hWnd] = this;
}

CWnd::~CWnd() {
    LivingWindows& living = living_windows();
    const std::lock_guard lock(living.guard);
    std::erase_if(living.windows, [this](const auto& entry) { return entry.second == this; });
}

CWnd* CWnd::FromHandle(HWND wnd) {
    LivingWindows& living = living_windows();
    const std::lock_guard lock(living.guard);
    const auto found = living.windows.find(wnd);
    return found == living.windows.end() ? nullptr : found->second;
}

CWnd* CWnd::AddField(UINT id) {
    fields_.push_back(std::make_unique<CWnd>());
    fields_.back()->id_ = static_cast<int>(id);
    return fields_.back().get();
}

CComboBox* CWnd::AddComboBox(UINT id) {
    auto box = std::make_unique<CComboBox>();
    CComboBox* const added = box.get();
    static_cast<CWnd*>(added)->id_ = static_cast<int>(id);
    fields_.push_back(std::move(box));
    return added;
}

CWnd* CWnd::GetDlgItem(int id) const {
    for (const auto& field : fields_)
        if (field->id_ == id) return field.get();
    return nullptr;
}

int CWnd::GetDlgItemText(int id, LPSTR text, int size) const {
    const CWnd* const field = GetDlgItem(id);
    if (field) return field->GetWindowText(text, size);
    return CWnd().GetWindowText(text, size);
}

int CWnd::GetDlgItemText(int id, CString& text) const {
    const CWnd* const field = GetDlgItem(id);
    text = field ? field->text_ : CString();
    return text.GetLength();
}

void CWnd::SetDlgItemText(int id, LPCSTR text) {
    if (CWnd* const field = GetDlgItem(id)) field->SetWindowText(text);
}

UINT CWnd::GetDlgItemInt(int id, BOOL* translated, BOOL isSigned) const {
    const CWnd* const field = GetDlgItem(id);
    const tool::LeadingInteger number = tool::read_leading_integer(field ? field->text_.View() : std::string_view());
    const bool fits = isSigned ? number.value >= std::numeric_limits<std::int32_t>::min() &&
                                     number.value <= std::numeric_limits<std::int32_t>::max()
                               : number.value >= 0 && number.value <= std::numeric_limits<UINT>::max();
    const bool valid = number.used > 0 && fits;
    if (translated) *translated = valid;
    return valid ? static_cast<UINT>(number.value) : 0;
}

void CWnd::SetDlgItemInt(int id, UINT value, BOOL isSigned) {
    const std::int64_t number = isSigned ? static_cast<std::int32_t>(value) : static_cast<std::int64_t>(value);
    SetDlgItemText(id, tool::print_int(number).c_str());
}

int CWnd::GetWindowText(LPSTR text, int size) const {
    return static_cast<int>(tool::copy_cut(text_.View(), text, size > 0 ? static_cast<std::size_t>(size) : 0));
}

BOOL CWnd::EnableWindow(BOOL enable) {
    return !std::exchange(enabled_, enable != FALSE);
}

BOOL CWnd::ShowWindow(int showCmd) {
    const BOOL visible = IsWindowVisible();
    placement_.showCmd = static_cast<UINT>(showCmd);
    return visible;
}

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* placement) const {
    if (!placement) return FALSE;
    *placement = placement_;
    return TRUE;
}

BOOL CWnd::SetWindowPlacement(const WINDOWPLACEMENT* placement) {
    if (!placement) return FALSE;
    placement_ = *placement;
    placement_.length = sizeof(WINDOWPLACEMENT);
    return TRUE;
}

CComboBox::~CComboBox() = default;

int CComboBox::AddString(LPCSTR text) {
    items_.push_back({text, 0});
    return GetCount() - 1;
}

void CComboBox::ResetContent() {
    items_.clear();
    selected_ = CB_ERR;
}

const CComboBox::Item* CComboBox::item(int index) const {
    return index >= 0 && index < GetCount() ? &items_[static_cast<std::size_t>(index)] : nullptr;
}

int CComboBox::GetLBTextLen(int index) const {
    const Item* const found = item(index);
    return found ? found->text.GetLength() : CB_ERR;
}

int CComboBox::GetLBText(int index, LPSTR text) const {
    const Item* const found = item(index);
    if (!found) return CB_ERR;
    return static_cast<int>(tool::copy_cut(found->text.View(), text, found->text.View().size() + 1));
}

void CComboBox::GetLBText(int index, CString& text) const {
    const Item* const found = item(index);
    text = found ? found->text : CString();
}

int CComboBox::SetItemData(int index, DWORD_PTR data) {
    if (!item(index)) return CB_ERR;
    items_[static_cast<std::size_t>(index)].data = data;
    return CB_OKAY;
}

DWORD_PTR CComboBox::GetItemData(int index) const {
    const Item* const found = item(index);
    return found ? found->data : static_cast<DWORD_PTR>(CB_ERR);
}

int CComboBox::SetCurSel(int index) {
    if (index != CB_ERR && !item(index)) return CB_ERR;
    selected_ = index;
    return selected_;
}
