#include "framework/settings.h"

#include <mutex>

#include "platform/framework/caller_buffer.h"
#include "platform/framework/profile.h"
#include "platform/number_text.h"
#include "platform/settings_file.h"
#include "platform/settings_form.h"
#include "platform/system.h"

namespace tool {

std::string profile_text(const char* section, const char* key, const char* default_value, const char* file) {
    if (auto read = read_file(profile_path(view_or_empty(file)), largest_text_file)) {
        const std::string text = settings_text(std::move(*read));
        if (const auto value = setting(text, view_or_empty(section), view_or_empty(key))) return std::string(*value);
    }
    // Kept: a default loses its trailing blanks only, a value those on both sides, as the platform has it.
    std::string_view fallback = view_or_empty(default_value);
    while (fallback.ends_with(' ')) fallback.remove_suffix(1);
    return std::string(fallback);
}

}  // namespace tool

namespace {

// Names one after the other, each with its NUL, and a NUL behind the last.
DWORD copy_list(const std::vector<std::string_view>& names, LPSTR buffer, DWORD size) {
    std::string list;
    for (const std::string_view name : names) list.append(name) += '\0';
    tool::copy_cut("", buffer, size);
    if (size < 2) return 0;
    buffer[1] = '\0';
    if (list.size() < size) {
        tool::copy_cut(list, buffer, size);
        return static_cast<DWORD>(list.size());
    }
    tool::copy_cut(list.substr(0, size - 2), buffer, size);
    buffer[size - 1] = '\0';
    return size - 2;
}

}  // namespace

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer, DWORD size, LPCSTR file) {
    if (!buffer || size == 0) return 0;
    if (section && key)
        return static_cast<DWORD>(tool::copy_cut(tool::profile_text(section, key, defaultValue, file), buffer, size));
    const std::string text = tool::settings_text(
        tool::read_file(tool::profile_path(tool::view_or_empty(file)), tool::largest_text_file).value_or(""));
    return copy_list(section ? tool::setting_keys(text, section) : tool::setting_sections(text), buffer, size);
}

UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, int defaultValue, LPCSTR file) {
    const std::string text = tool::profile_text(section, key, "", file);
    // Kept: values from 2^31 on are the numbers with the same 32 bits, where other readers of integers saturate.
    return static_cast<UINT>(text.empty() ? defaultValue : tool::read_leading_integer(text).value);
}

BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file) {
    if (!section || !file) return FALSE;
    static std::mutex one_at_a_time;  // so that no thread's change is lost between another's reading and writing
    const std::lock_guard lock(one_at_a_time);
    const std::string path = tool::profile_path(file);
    const auto found = tool::read_file(path, tool::largest_text_file);
    if (!found && tool::file_status(path)) return FALSE;  // there, but not to be read: writing would lose it
    const std::string before = tool::settings_text(found.value_or(""));
    const auto after = !key     ? tool::without_section(before, section)
                       : !value ? tool::without_setting(before, section, key)
                                : tool::with_setting(before, section, key, value);
    return after && (*after == before ||
                     tool::write_file_atomically(path, tool::settings_file_with(found.value_or(""), *after)));
}
