#include "framework/window.h"

#include <limits>
#include <utility>

#include "platform/framework/caller_buffer.h"
#include "platform/framework/living_windows.h"
#include "platform/framework/memory_window.h"
#include "platform/number_text.h"

namespace tool {

LivingHandles<HWND, CWnd>& living_windows() {
    static auto& living = *new LivingHandles<HWND, CWnd>;  // never destroyed: windows may live longer than a library
    return living;
}

}  // namespace tool

CWnd::CWnd() : CWnd(std::make_unique<tool::MemoryWindow>()) {}

CWnd::CWnd(std::unique_ptr<tool::WindowBody> body) : m_hWnd(tool::living_windows().add(this)), body_(std::move(body)) {}

CWnd::~CWnd() {
    tool::living_windows().remove(this);
}

CWnd* CWnd::AddField(UINT id) {
    fields_.push_back(std::unique_ptr<CWnd>(new CWnd(std::make_unique<tool::MemoryWindow>(static_cast<int>(id)))));
    return fields_.back().get();
}

CComboBox* CWnd::AddComboBox(UINT id) {
    auto* const box = new CComboBox(std::make_unique<tool::MemoryWindow>(static_cast<int>(id)));
    fields_.push_back(std::unique_ptr<CWnd>(box));
    return box;
}

CInputMethod* CWnd::GetInputMethod() const {
    return input_method_ ? input_method_ : body_->input_method();
}

int CWnd::GetDlgCtrlID() const {
    return body_->id();
}

CWnd* CWnd::GetDlgItem(int id) const {
    for (const auto& field : fields_)
        if (field->GetDlgCtrlID() == id) return field.get();
    return body_->field(id);
}

int CWnd::GetDlgItemText(int id, LPSTR text, int size) const {
    const CWnd* const field = GetDlgItem(id);
    if (field) return field->GetWindowText(text, size);
    return CWnd().GetWindowText(text, size);
}

int CWnd::GetDlgItemText(int id, CString& text) const {
    const CWnd* const field = GetDlgItem(id);
    text = CString(std::string_view(field ? field->body_->text() : std::string()));
    return text.GetLength();
}

void CWnd::SetDlgItemText(int id, LPCSTR text) {
    if (CWnd* const field = GetDlgItem(id)) field->SetWindowText(text);
}

UINT CWnd::GetDlgItemInt(int id, BOOL* translated, BOOL isSigned) const {
    CString text;
    GetDlgItemText(id, text);
    const tool::LeadingInteger number = tool::read_leading_integer(text.View());
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
    return static_cast<int>(tool::copy_cut(body_->text(), text, size > 0 ? static_cast<std::size_t>(size) : 0));
}

void CWnd::GetWindowText(CString& text) const {
    text = CString(std::string_view(body_->text()));
}

int CWnd::GetWindowTextLength() const {
    return static_cast<int>(body_->text().size());
}

void CWnd::SetWindowText(LPCSTR text) {
    body_->set_text(text);
}

BOOL CWnd::EnableWindow(BOOL enable) {
    return body_->enable(enable);
}

BOOL CWnd::IsWindowEnabled() const {
    return body_->is_enabled();
}

BOOL CWnd::ShowWindow(int showCmd) {
    return body_->show(showCmd);
}

BOOL CWnd::IsWindowVisible() const {
    return body_->is_visible();
}

BOOL CWnd::IsZoomed() const {
    return body_->is_zoomed();
}

BOOL CWnd::IsIconic() const {
    return body_->is_iconic();
}

BOOL CWnd::GetWindowPlacement(WINDOWPLACEMENT* placement) const {
    return body_->placement(placement);
}

BOOL CWnd::SetWindowPlacement(const WINDOWPLACEMENT* placement) {
    return body_->set_placement(placement);
}

CComboBox::CComboBox() = default;
CComboBox::CComboBox(std::unique_ptr<tool::WindowBody> body) : CWnd(std::move(body)) {}
CComboBox::~CComboBox() = default;

int CComboBox::AddString(LPCSTR text) {
    return body_->add_item(text);
}

void CComboBox::ResetContent() {
    body_->remove_items();
}

int CComboBox::GetCount() const {
    return body_->item_count();
}

int CComboBox::GetLBTextLen(int index) const {
    const auto text = body_->item_text(index);
    return text ? static_cast<int>(text->size()) : CB_ERR;
}

int CComboBox::GetLBText(int index, LPSTR text) const {
    const auto found = body_->item_text(index);
    return found ? static_cast<int>(tool::copy_cut(*found, text, found->size() + 1)) : CB_ERR;
}

void CComboBox::GetLBText(int index, CString& text) const {
    text = CString(std::string_view(body_->item_text(index).value_or("")));
}

int CComboBox::SetItemData(int index, DWORD_PTR data) {
    return body_->set_item_data(index, data);
}

DWORD_PTR CComboBox::GetItemData(int index) const {
    return body_->item_data(index);
}

int CComboBox::SetCurSel(int index) {
    return body_->select_item(index);
}

int CComboBox::GetCurSel() const {
    return body_->selected_item();
}
