// Addition of this project: the folder picker that CTools::BrowseFolder asks. A host installs the dialog of its own
// toolkit.
#pragma once

#include "framework/export.h"
#include "framework/scalars.h"
#include "framework/text.h"

class CWnd;

class TOOL_API CFolderPicker {
 public:
    virtual ~CFolderPicker();
    // Shows the picker, modal to `owner` (may be null), with `start` selected ("": the picker's own choice) and the
    // platform's browse flags. Non-zero and *chosen when the user chose a folder.
    virtual BOOL Pick(CWnd* owner, LPCSTR title, LPCSTR start, UINT flags, CString* chosen) = 0;
};

// Installs the process's picker (null: none, the start) and returns the one before. Not owned.
TOOL_API CFolderPicker* SetFolderPicker(CFolderPicker* picker);
