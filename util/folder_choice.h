// Asking the user for a folder through the picker that the host installed.
#pragma once

#include <optional>
#include <string>

#include "framework/scalars.h"

class CWnd;

namespace tool {

// Nothing when no picker is installed or the user chose none.
std::optional<std::string> chosen_folder(CWnd* owner, const std::string& path, const char* title, UINT flags);

}  // namespace tool
