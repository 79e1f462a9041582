#include "framework/application.h"
#include "platform/code_page.h"
#include "platform/framework/caller_buffer.h"
#include "platform/system.h"

int CWinApp::DoMessageBox(LPCSTR text, UINT type, UINT) {
    tool::write_to_standard_error(tool::utf8_from_code_page(tool::view_or_empty(text)));
    const UINT buttons = type & 0x0F;
    return buttons == 2 ? IDABORT : buttons == 3 || buttons == 4 ? IDYES : buttons == 5 ? IDRETRY : IDOK;
}
