#include "platform/win32/system_window.h"

#include <memory>
#include <unordered_map>
#include <utility>

#include "platform/framework/caller_buffer.h"
#include "platform/framework/living_windows.h"
#include "platform/framework/memory_window.h"
#include "platform/win32/names.h"

namespace tool::win32 {
namespace {

class InputContext {
 public:
    explicit InputContext(HWND window) : window_(window), context_(ImmGetContext(window)) {}
    ~InputContext() {
        if (context_) ImmReleaseContext(window_, context_);
    }
    InputContext(const InputContext&) = delete;
    InputContext& operator=(const InputContext&) = delete;
    operator HIMC() const { return context_; }

 private:
    HWND window_;
    HIMC context_;
};

}  // namespace

BOOL SystemInputMethod::GetOpenStatus() const {
    return ImmGetOpenStatus(InputContext(window_));
}

void SystemInputMethod::SetOpenStatus(BOOL open) {
    ImmSetOpenStatus(InputContext(window_), open);
}

DWORD SystemInputMethod::GetConversion() const {
    DWORD conversion = 0, sentence = 0;
    ImmGetConversionStatus(InputContext(window_), &conversion, &sentence);
    return conversion;
}

void SystemInputMethod::SetConversion(DWORD conversion) {
    const InputContext context(window_);
    DWORD before = 0, sentence = 0;
    ImmGetConversionStatus(context, &before, &sentence);
    ImmSetConversionStatus(context, conversion, sentence);
}

CString SystemInputMethod::GetReading() const {
    const InputContext context(window_);
    const LONG bytes = ImmGetCompositionStringW(context, GCS_RESULTREADSTR, nullptr, 0);
    if (bytes <= 0) return {};
    std::wstring reading(static_cast<std::size_t>(bytes) / sizeof(wchar_t), L'\0');
    ImmGetCompositionStringW(context, GCS_RESULTREADSTR, reading.data(), static_cast<DWORD>(bytes));
    return CString(std::string_view(nearest_code_page_text(reading)));
}

CWnd* SystemWindow::field(int id) const {
    return CWnd::FromHandle(::GetDlgItem(window_, id));
}

std::string SystemWindow::text() const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window_)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window_, text.data(), static_cast<int>(text.size()))));
    return nearest_code_page_text(text);
}

void SystemWindow::set_text(const char* text) {
    SetWindowTextW(window_, wide(view_or_empty(text)).c_str());
}

CInputMethod* SystemWindow::input_method() {
    return InputContext(window_) ? &input_method_ : nullptr;
}

int SystemWindow::add_item(const char* text) {
    return static_cast<int>(send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(wide(view_or_empty(text)).c_str())));
}

std::optional<std::string> SystemWindow::item_text(int index) const {
    const LRESULT length = send(CB_GETLBTEXTLEN, index);
    if (length == CB_ERR) return std::nullopt;
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    send(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return nearest_code_page_text(text);
}

// A list's data may itself be CB_ERR, so that indices outside it are told by the count.
int SystemWindow::set_item_data(int index, DWORD_PTR data) {
    if (index < 0 || index >= item_count()) return CB_ERR;
    return send(CB_SETITEMDATA, index, static_cast<LPARAM>(data)) == CB_ERR ? CB_ERR : CB_OKAY;
}

DWORD_PTR SystemWindow::item_data(int index) const {
    if (index < 0 || index >= item_count()) return static_cast<DWORD_PTR>(CB_ERR);
    return static_cast<DWORD_PTR>(send(CB_GETITEMDATA, index));
}

}  // namespace tool::win32

CWnd* CWnd::FromHandle(HWND wnd) {
    if (CWnd* const own = tool::living_windows().find(wnd)) return own;
    // Combo boxes, so that the host framework's usual cast of a dialog's field is a right one.
    thread_local std::unordered_map<HWND, std::unique_ptr<CComboBox>> passing;
    std::erase_if(passing, [](const auto& entry) { return !IsWindow(entry.first); });
    if (!IsWindow(wnd)) return nullptr;
    std::unique_ptr<CComboBox>& object = passing[wnd];
    if (!object) {
        object.reset(new CComboBox(std::make_unique<tool::win32::SystemWindow>(wnd)));
        object->m_hWnd = wnd;
    }
    return object.get();
}

BOOL CWnd::Attach(HWND wnd) {
    if (!IsWindow(wnd)) return FALSE;
    body_ = std::make_unique<tool::win32::SystemWindow>(wnd);
    m_hWnd = wnd;
    tool::living_windows().enter(wnd, this);
    return TRUE;
}

HWND CWnd::Detach() {
    if (!dynamic_cast<tool::win32::SystemWindow*>(body_.get())) return nullptr;
    tool::living_windows().remove(this);
    body_ = std::make_unique<tool::MemoryWindow>();
    return std::exchange(m_hWnd, tool::living_windows().add(this));
}
