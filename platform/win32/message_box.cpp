#include "framework/application.h"
#include "platform/framework/caller_buffer.h"
#include "platform/win32/names.h"

int CWinApp::DoMessageBox(LPCSTR text, UINT type, UINT) {
    const auto shown = [](LPCSTR text_932) { return tool::win32::wide(tool::view_or_empty(text_932)); };
    return MessageBoxW(GetActiveWindow(), shown(text).c_str(), shown(m_pszAppName).c_str(), type);
}
