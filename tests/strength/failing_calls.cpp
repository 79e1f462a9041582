// What stands here is found before the system's own by this program and by the libraries it loads.
#include "strength/failing_calls.h"

#include <dlfcn.h>
#include <sys/types.h>
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
    if (kind != Harm::error) return std::raise(kind == Harm::kill ? SIGKILL : SIGTERM) != 0;
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

#define FAILING(result, name, parameters, arguments, error, failure)       \
    result name parameters {                                               \
        static const auto of_the_system = strength::next(&name, #name);    \
        return strength::fails(error) ? failure : of_the_system arguments; \
    }
#define FAILING_WHEN_DONE(result, name, parameters, arguments, error, failure) \
    result name parameters {                                                   \
        static const auto of_the_system = strength::next(&name, #name);        \
        const auto done = of_the_system arguments;                             \
        return strength::fails(error) ? failure : done;                        \
    }

#pragma GCC visibility push(default)
extern "C" {
FAILING(int, open, (const char* path, int flags, unsigned mode), (path, flags, mode), EMFILE, -1)
FAILING(FILE*, fopen, (const char* path, const char* mode), (path, mode), EMFILE, nullptr)
FAILING(FILE*, fopen64, (const char* path, const char* mode), (path, mode), EMFILE, nullptr)
FAILING(ssize_t, read, (int file, void* to, size_t count), (file, to, count), EIO, -1)
FAILING(ssize_t, write, (int file, const void* from, size_t count), (file, from, count), ENOSPC, -1)
FAILING(ssize_t, writev, (int file, const iovec* from, int count), (file, from, count), ENOSPC, -1)
FAILING(int, rename, (const char* from, const char* to), (from, to), EXDEV, -1)
FAILING(int, fsync, (int file), (file), EIO, -1)
FAILING(int, flock, (int file, int operation), (file, operation), ENOLCK, -1)
FAILING(int, ftruncate, (int file, off_t size), (file, size), EIO, -1)
FAILING(int, fchmod, (int file, mode_t mode), (file, mode), EPERM, -1)
FAILING(int, fchmodat, (int at, const char* path, mode_t mode, int flags), (at, path, mode, flags), EPERM, -1)
FAILING_WHEN_DONE(int, close, (int file), (file), EIO, -1)
FAILING_WHEN_DONE(int, fclose, (FILE * file), (file), EIO, -1)
}
