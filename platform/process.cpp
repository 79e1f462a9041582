#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "platform/system.h"

namespace tool {
namespace {

std::mutex module_guard;
std::optional<std::string> module_set;
std::atomic<LocalTime (*)()> clock_set = nullptr;
std::mutex unread_guard;
std::string unread;

}  // namespace

std::string module_file_name() {
    static const std::string own = program_path();
    const std::lock_guard lock(module_guard);
    return module_set.value_or(own);
}

void set_module_file_name(std::optional<std::string> path) {
    const std::lock_guard lock(module_guard);
    module_set = std::move(path);
}

LocalTime local_time() {
    const auto clock = clock_set.load();
    return clock ? clock() : system_time();
}

void set_local_clock(LocalTime (*clock)()) {
    clock_set = clock;
}

void note_unread(std::string_view path) {
    if (tells_absence(last_error())) return;
    const std::lock_guard lock(unread_guard);
    if (unread.empty()) unread = path;
}

std::string take_unread() {
    const std::lock_guard lock(unread_guard);
    return std::exchange(unread, {});
}

}  // namespace tool
