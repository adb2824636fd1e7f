// Loaded into a program, this makes its calls on the store fail. MORLAINE_FAULT is "CALL ERROR FIRST LAST": from the
// FIRST to the LAST time that it is made, the call ends with the number of an error; error 0 is a short write. That
// a call has failed is said once on standard error.

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

struct Fault {
    char call[16] = "";
    int error = 0;
    int first = INT_MAX;
    int last = 0;
};

Fault readFault()
{
    Fault fault;
    const char* const text = std::getenv("MORLAINE_FAULT");
    if (text != nullptr) {
        (void)std::sscanf(text, "%15s %d %d %d", fault.call, &fault.error, &fault.first, &fault.last);
    }
    return fault;
}

bool isOfStore(const char* path)
{
    return std::strstr(path, "com.morlaine.Morlaine") != nullptr;
}

bool isOfStore(int descriptor)
{
    char path[PATH_MAX] = "";
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    return ::syscall(SYS_readlink, link.c_str(), path, sizeof path - 1) > 0 && isOfStore(path);
}

template <typename Item>
bool fails(const char* call, Item item)
{
    static const Fault fault = readFault();
    static std::atomic<int> count = 0;
    if (std::strcmp(call, fault.call) != 0 || !isOfStore(item) || ++count < fault.first || count > fault.last) {
        return false;
    }
    if (count == fault.first) {
        (void)::syscall(SYS_write, 2, "failed\n", 7);
    }
    errno = fault.error;
    return true;
}

template <typename Function>
Function next(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

// The system's headers have reserved names, and a macro's lists of parameters are no expressions.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name, bugprone-macro-parentheses)
#define MORLAINE_FAIL(type, name, item, parameters, arguments)                                                         \
    extern "C" type name parameters                                                                                    \
    {                                                                                                                  \
        static const auto real = next<type(*) parameters>(#name);                                                      \
        return fails(#name, item) ? -1 : real arguments;                                                               \
    }

MORLAINE_FAIL(int, mkostemps, path, (char* path, int length, int flags), (path, length, flags))
MORLAINE_FAIL(int, fsync, file, (int file), (file))
MORLAINE_FAIL(int, flock, file, (int file, int operation), (file, operation))
MORLAINE_FAIL(int, renameat2, from, (int a, const char* from, int b, const char* to, unsigned flags),
              (a, from, b, to, flags))
MORLAINE_FAIL(int, unlink, path, (const char* path), (path))
MORLAINE_FAIL(int, access, path, (const char* path, int mode), (path, mode))
MORLAINE_FAIL(ssize_t, read, file, (int file, void* bytes, size_t size), (file, bytes, size))

extern "C" int open(const char* path, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    return fails("open", path) ? -1 : static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

extern "C" ssize_t write(int file, const void* bytes, size_t size)
{
    if (fails("write", file)) {
        if (errno != 0) {
            return -1;
        }
        size = (size + 1) / 2;
    }
    return ::syscall(SYS_write, file, bytes, size);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name, bugprone-macro-parentheses)
