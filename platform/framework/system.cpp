#include "framework/system.h"

#include <atomic>

#include "platform/framework/caller_buffer.h"
#include "platform/or_failed.h"
#include "platform/system.h"

namespace {

std::atomic<LocalClock> clock_set = nullptr;

tool::LocalTime time_of_clock() {
    const LocalClock clock = clock_set.load();
    if (!clock) return tool::system_time();
    const SYSTEMTIME now = clock();
    return {now.wYear, now.wMonth, now.wDay, now.wDayOfWeek, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

}  // namespace

void SetModuleFileNameA(const char* path) {
    tool::set_module_file_name(path ? std::optional<std::string>(path) : std::nullopt);
}

DWORD GetProgramFileNameA(LPSTR path, DWORD size) {
    const std::string name = tool::module_file_name();
    const auto copied = static_cast<DWORD>(tool::copy_cut(name, path, size));
    return copied < name.size() ? size : copied;
}

CString GetErrorText(DWORD code) {
    return tool::or_failed(CString(), [&] { return CString(std::string_view(tool::error_text(code))); });
}

void SetLocalClock(LocalClock clock) {
    clock_set = clock;
    tool::set_local_clock(clock ? time_of_clock : nullptr);
}
