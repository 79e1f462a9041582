#include "base/system.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdlib>
#include <string>

namespace cephtool {

void prepare_standard_streams() {
    for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    static const UINT code_page = GetConsoleOutputCP();  // which stays with the console, so it is put back
    SetConsoleOutputCP(CP_UTF8);
    std::atexit([] { SetConsoleOutputCP(code_page); });
}

// A console of Windows 10 or later can, when it is asked to.
bool is_terminal(StandardStream stream) {
    const HANDLE console = GetStdHandle(stream == StandardStream::output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

std::string this_process() {
    char computer[MAX_COMPUTERNAME_LENGTH + 1] = "";
    DWORD length = sizeof computer;
    const bool named = GetComputerNameA(computer, &length);
    return "process " + std::to_string(GetCurrentProcessId()) + (named ? std::string(" on ") + computer : "");
}

bool is_standard_input(const std::filesystem::path& file) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    const HANDLE other = CreateFileW(file.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                     OPEN_EXISTING, 0, nullptr);
    if (other == INVALID_HANDLE_VALUE) return false;
    BY_HANDLE_FILE_INFORMATION one, two;
    const bool same = GetFileType(input) == FILE_TYPE_DISK && GetFileInformationByHandle(input, &one) &&
                      GetFileInformationByHandle(other, &two) && one.dwVolumeSerialNumber == two.dwVolumeSerialNumber &&
                      one.nFileIndexHigh == two.nFileIndexHigh && one.nFileIndexLow == two.nFileIndexLow;
    CloseHandle(other);
    return same;
}

std::filesystem::path running_program() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) return path.substr(0, length);
        path.resize(2 * path.size());
    }
}

std::ptrdiff_t read_standard_input(char* to, std::size_t size, bool (*stop)()) {
    constexpr DWORD most = 1 << 30, moment_ms = 100;
    DWORD got = 0;
    if (ReadFile(GetStdHandle(STD_INPUT_HANDLE), to, size < most ? static_cast<DWORD>(size) : most, &got, nullptr)) {
        // Ctrl-C in a console gives no bytes, and the signal a moment later.
        if (got == 0 && GetLastError() == ERROR_OPERATION_ABORTED && !stop()) Sleep(moment_ms);
        return static_cast<std::ptrdiff_t>(got);
    }
    return GetLastError() == ERROR_BROKEN_PIPE || GetLastError() == ERROR_HANDLE_EOF ? 0 : -1;
}

bool can_open_files(int) {
    return true;  // a limit of ten million
}

std::FILE* opened_to_read(const std::filesystem::path& path) {
    return _wfopen(path.c_str(), L"rb");
}

}  // namespace cephtool
