#include "base/library_name.h"

#include <CodePage.h>

#include <algorithm>

#include "base/path.h"

namespace cephtool {

std::optional<CString> library_name(const std::string& utf8) {
    CString name;
    if (!CodePage932FromUtf8(utf8.c_str(), &name) || Utf8FromCodePage932(name) != utf8) return {};
    return name;
}

std::filesystem::path path_from_library(const char* path) {
    std::string name = Utf8FromCodePage932(path);
    std::ranges::replace(name, '\\', '/');
    return path_from_utf8(name).make_preferred();
}

}  // namespace cephtool
