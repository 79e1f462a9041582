// The application object: its profile (settings file), its message boxes and, off Windows, its message queue.
#pragma once

#include "framework/export.h"
#include "framework/scalars.h"
#include "framework/text.h"

#if !defined(_WIN32)
enum : UINT {
    MB_OK = 0x00,
    MB_OKCANCEL = 0x01,
    MB_YESNOCANCEL = 0x03,
    MB_YESNO = 0x04,
    MB_ICONSTOP = 0x10,
    MB_ICONERROR = 0x10,
    MB_ICONQUESTION = 0x20,
    MB_ICONEXCLAMATION = 0x30,
    MB_ICONINFORMATION = 0x40
};
enum { IDOK = 1, IDCANCEL = 2, IDABORT = 3, IDRETRY = 4, IDIGNORE = 5, IDYES = 6, IDNO = 7 };
#endif

class TOOL_API CWinApp {
 public:
    // From here to its end AfxGetApp gives this object to all threads, unless another one is made after it.
    explicit CWinApp(LPCSTR appName = nullptr);
    virtual ~CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    LPCSTR m_pszAppName;
    // The profile's file, "Korvane9.ini" unless the host sets another; not owned. A name without a folder stands
    // beside the running program.
    LPCSTR m_pszProfileName;

    virtual UINT GetProfileInt(LPCSTR section, LPCSTR entry, int defaultValue);
    virtual BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);
    // Values of any length; a null default is "".
    virtual CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue = nullptr);
    // A null value removes the entry, a null entry the section.
    virtual BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value);

    // The default shows the system's message box under the application's name. Off Windows it writes the text to
    // standard error and answers with the box's first button.
    virtual int DoMessageBox(LPCSTR text, UINT type, UINT idPrompt);

 private:
    friend CWinApp* AfxGetApp();
    struct Default {};
    explicit CWinApp(Default);
};

// The host's application object; without one a default object, never null.
TOOL_API CWinApp* AfxGetApp();
// DoMessageBox of that object.
TOOL_API int AfxMessageBox(LPCSTR text, UINT type = MB_OK, UINT idHelp = 0);

#if !defined(_WIN32)

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

enum : UINT { PM_NOREMOVE = 0, PM_REMOVE = 1 };

// Addition: the message queue of a host's thread.
class TOOL_API CMessageQueue {
 public:
    virtual ~CMessageQueue();
    // The next waiting message, taken off the queue when `remove`; FALSE when none waits.
    virtual BOOL Peek(MSG* message, BOOL remove) = 0;

    // Asked before a message is dispatched. The default translates nothing: FALSE.
    virtual BOOL Translate(const MSG& message);

    virtual void Dispatch(const MSG& message) = 0;
};

// Addition: installs the calling thread's queue (null: none, the start) and returns the one before. Not owned.
TOOL_API CMessageQueue* SetMessageQueue(CMessageQueue* queue);

// On the calling thread's queue; without one no message ever waits. The window and the range of messages asked for
// are not told apart.
TOOL_API BOOL PeekMessageA(MSG* message, HWND wnd, UINT first, UINT last, UINT remove);
TOOL_API BOOL TranslateMessage(const MSG* message);
TOOL_API LPARAM DispatchMessageA(const MSG* message);

#endif
