// CTools: the application, its settings and windows, the input method and messages.
#include <cstring>
#include <mutex>
#include <string>

#include "Tools.h"
#include "framework/application.h"
#include "framework/input_method.h"
#include "framework/settings.h"
#include "framework/system.h"
#include "platform/number_text.h"
#include "platform/or_failed.h"
#include "util/caller_text.h"
#include "util/kana_input.h"
#include "util/program_folder.h"
#include "util/window_placement.h"

using tool::as_far_as_possible, tool::or_empty, tool::or_failed;

CString CTools::GetIniFileName() {
    return "Korvane9.ini";
}

const char* CTools::GetExecutionFileDirectoryPath() {
    // Kept: one buffer for the process. Hosts hold on to the pointer and expect it to stay the same. It is written only
    // when it changes, so that a thread can read it while another one asks.
    static char path[260];
    static std::mutex one_at_a_time;
    as_far_as_possible([] {
        std::string folder = tool::program_folder();
        if (folder.size() >= sizeof path) folder.clear();
        const std::lock_guard lock(one_at_a_time);
        if (folder != path) std::memcpy(path, folder.c_str(), folder.size() + 1);
    });
    return path;
}

int CTools::GetProfileIntEx(const char* section, const char* key, int defaultValue, const char* file) {
    return or_failed(defaultValue, [&] {
        if (*or_empty(file))
            return static_cast<int>(GetPrivateProfileIntA(or_empty(section), or_empty(key), defaultValue, file));
        return static_cast<int>(AfxGetApp()->GetProfileInt(or_empty(section), or_empty(key), defaultValue));
    });
}

void CTools::WriteProfileIntEx(const char* section, const char* key, int value, const char* file) {
    as_far_as_possible([&] {
        if (*or_empty(file)) {
            WritePrivateProfileStringA(or_empty(section), or_empty(key), tool::print_int(value).c_str(), file);
        } else {
            AfxGetApp()->WriteProfileInt(or_empty(section), or_empty(key), value);
        }
    });
}

void CTools::LoadWindowPos(CWnd* wnd, const char* prefix) {
    if (wnd) as_far_as_possible([&] { tool::restore_placement(*wnd, or_empty(prefix)); });
}

void CTools::SaveWindowPos(CWnd* wnd, const char* prefix) {
    if (wnd) as_far_as_possible([&] { tool::store_placement(*wnd, or_empty(prefix)); });
}

CString CTools::GetFurigana(CWnd* edit, int kind) {
    const CInputMethod* const method = edit ? edit->GetInputMethod() : nullptr;
    if (!method) return {};
    return or_failed(CString(), [&] { return tool::reading(*method, kind); });
}

void CTools::ImmSet(HWND wnd, int open, UINT mode) {
    const CWnd* const window = CWnd::FromHandle(wnd);
    CInputMethod* const method = window ? window->GetInputMethod() : nullptr;
    if (method) as_far_as_possible([&] { tool::set_input(*method, open, mode); });
}

void CTools::MessageProcessing() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void CTools::GetLastErrMessage() {
    as_far_as_possible([] { AfxMessageBox(GetErrorText(GetLastError()), MB_OK | MB_ICONSTOP); });
}

void CTools::Debug(char*, int) {}
