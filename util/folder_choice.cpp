#include "util/folder_choice.h"

#include <atomic>

#include "FolderPicker.h"
#include "util/delimiter.h"

namespace {

std::atomic<CFolderPicker*> installed_picker = nullptr;

}  // namespace

CFolderPicker::~CFolderPicker() = default;

CFolderPicker* SetFolderPicker(CFolderPicker* picker) {
    return installed_picker.exchange(picker);
}

namespace tool {

std::optional<std::string> chosen_folder(CWnd* owner, const std::string& path, const char* title, UINT flags) {
    CFolderPicker* const picker = installed_picker;
    if (!picker) return std::nullopt;
    // Kept: only a path longer than a drive's root is a place to start from.
    const std::string start = path.size() > 3 ? without_delimiter(path) : std::string();
    CString chosen;
    if (!picker->Pick(owner, title, start.c_str(), flags, &chosen)) return std::nullopt;
    return std::string(chosen.View());
}

}  // namespace tool
