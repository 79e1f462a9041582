#include "platform/framework/profile.h"

#include "framework/scalars.h"

namespace tool {

std::string profile_text(const char* section, const char* key, const char* default_value, const char* file) {
    if (!section || !key) return default_value ? default_value : "";
    std::string value(256, '\0');
    for (;;) {
        const auto size = static_cast<DWORD>(value.size());
        const DWORD length =
            GetPrivateProfileStringA(section, key, default_value ? default_value : "", value.data(), size, file);
        if (length + 1 < size) return value.substr(0, length);
        value.resize(2 * value.size());  // cut, or just fitting
    }
}

}  // namespace tool
