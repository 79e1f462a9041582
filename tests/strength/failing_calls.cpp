// What stands here is found before the system's own by this program and by the libraries it loads.
#include "strength/failing_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>

namespace strength {
namespace {

std::atomic<int> left = 0;
std::atomic<bool> harmed = false;
Harm kind;

bool fails(int error) {
    if (left <= 0 || --left > 0) return false;
    harmed = true;
    if (kind == Harm::signal) return std::raise(SIGTERM) != 0;
    errno = error;
    return true;
}

// The system's own function.
template <class Function>
Function* next(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

void harm_call(int n, Harm harm) {
    kind = harm;
    harmed = false;
    left = n;
}

bool harmless_again() {
    left = 0;
    return harmed;
}

}  // namespace strength

#define NEXT(name) static const auto system_##name = strength::next(&name, #name)

#pragma GCC visibility push(default)
extern "C" {

int open(const char* path, int flags, ...) {
    NEXT(open);
    return strength::fails(EMFILE) ? -1 : system_open(path, flags, 0666);  // the only mode in use
}
FILE* fopen64(const char* path, const char* mode) {
    NEXT(fopen64);
    return strength::fails(EMFILE) ? nullptr : system_fopen64(path, mode);
}
FILE* fopen(const char* path, const char* mode) {
    return fopen64(path, mode);
}
ssize_t read(int file, void* to, size_t count) {
    NEXT(read);
    return strength::fails(EIO) ? -1 : system_read(file, to, count);
}
ssize_t write(int file, const void* from, size_t count) {
    NEXT(write);
    return strength::fails(ENOSPC) ? -1 : system_write(file, from, count);
}
ssize_t writev(int file, const iovec* from, int count) {
    NEXT(writev);
    return strength::fails(ENOSPC) ? -1 : system_writev(file, from, count);
}
int close(int file) {
    NEXT(close);
    const int closed = system_close(file);
    return strength::fails(EIO) ? -1 : closed;
}
int fclose(FILE* file) {
    NEXT(fclose);
    const int closed = system_fclose(file);
    return strength::fails(EIO) ? -1 : closed;
}
int rename(const char* from, const char* to) {
    NEXT(rename);
    return strength::fails(EXDEV) ? -1 : system_rename(from, to);
}
int fchmod(int file, mode_t mode) {
    NEXT(fchmod);
    return strength::fails(EPERM) ? -1 : system_fchmod(file, mode);
}
int fchmodat(int folder, const char* path, mode_t mode, int flags) {
    NEXT(fchmodat);
    return strength::fails(EPERM) ? -1 : system_fchmodat(folder, path, mode, flags);
}

}  // extern "C"
