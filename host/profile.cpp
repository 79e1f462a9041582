#include "host/profile.h"

#include <filesystem>
#include <string_view>

#include "base/error.h"
#include "base/library_name.h"
#include "base/path.h"
#include "base/program_folder.h"
#include "base/wording.h"

namespace cephtool {
namespace {

std::string shipped_folder() {
    return utf8_from_path(shared_folder() / "anaitem");
}

}  // namespace

ProgramProfile::ProgramProfile(const std::string& analysis_folder)
    : CWinApp("cephtool"), folder_(analysis_folder.empty() ? shipped_folder() : analysis_folder) {
    std::error_code failure;
    if (!std::filesystem::is_directory(path_from_utf8(folder_), failure)) {
        throw Error(ExitCode::bad_command_line, printable(folder_) + " is no folder of analyses",
                    "Name one with --anaitem FOLDER.");
    }
    const std::optional<CString> name = library_name(folder_);
    if (!name) {
        throw Error(ExitCode::bad_command_line,
                    "the folder " + printable(folder_) + " has a name outside code page 932",
                    analysis_folder.empty()
                        ? "Move the program to a folder whose whole path is in plain or Japanese letters, or name "
                          "another folder of analyses with --anaitem FOLDER."
                        : "Use a folder whose whole path is in plain or Japanese letters.");
    }
    folder_in_profile_ = *name;
}

CString ProgramProfile::GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue) {
    const bool asks_folder = std::string_view(section) == "DB_DIR" && std::string_view(entry) == "ANAITEMPATH";
    return asks_folder ? folder_in_profile_ : CString(defaultValue);
}

UINT ProgramProfile::GetProfileInt(LPCSTR, LPCSTR, int defaultValue) {
    return static_cast<UINT>(defaultValue);
}

BOOL ProgramProfile::WriteProfileString(LPCSTR, LPCSTR, LPCSTR) {
    return FALSE;
}

BOOL ProgramProfile::WriteProfileInt(LPCSTR, LPCSTR, int) {
    return FALSE;
}

}  // namespace cephtool
