/*
 * Preloaded into a program that runs on a stand-in for the kernel's MDIO device: requests succeed
 * on any device node, and what the program does with "/dev/mdio" is written to the file that
 * GATEWAY_MDIO_LOG names, a line each:
 *   open 2               with the flags in hexadecimal; "open 2 failed" when there is no node
 *   ioctl c0085701 11 01 07 00 34 12 00 00     request number, the record's bytes before
 *   close                of a descriptor that was opened there
 * A read is answered with 0x1000 | SMI address << 5 | register. With GATEWAY_MDIO_FAIL in the
 * environment every request fails. Everything else goes on to the C library.
 */

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

constexpr unsigned long REQUEST = 0xC0085701;
constexpr int NONE = -1;

int watched = NONE; /* the descriptor of "/dev/mdio" */
bool fails = false;
int log_file = NONE;

template <typename Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

using Open = int(const char *, int, ...);
using Close = int(int);
using Ioctl = int(int, unsigned long, ...);
Open *next_open = nullptr;
Close *next_close = nullptr;
Ioctl *next_ioctl = nullptr;

__attribute__((constructor)) void start()
{
    next_open = next<Open>("open64");
    next_close = next<Close>("close");
    next_ioctl = next<Ioctl>("ioctl");
    fails = std::getenv("GATEWAY_MDIO_FAIL") != nullptr;
    const char *const path = std::getenv("GATEWAY_MDIO_LOG");
    if (path != nullptr) {
        log_file = static_cast<int>(
            syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644));
    }
}

void log_line(const char *line, int length)
{
    [[maybe_unused]] const long ignored =
        syscall(SYS_write, log_file, line, static_cast<size_t>(length));
}

void log_request(const unsigned char *record)
{
    char line[64];
    int length = snprintf(line, sizeof line, "ioctl %lx", REQUEST);
    for (int place = 0; place < 8; ++place) {
        length += snprintf(line + length, sizeof line - static_cast<size_t>(length), " %02x",
                           static_cast<unsigned>(record[place]));
    }
    line[length++] = '\n';
    log_line(line, length);
}

int answer(unsigned char *record)
{
    if (log_file != NONE) {
        log_request(record);
    }
    if (fails) {
        errno = EIO;
        return -1;
    }
    if (record[1] == 0) {
        const uint32_t value = 0x1000U | static_cast<uint32_t>(record[0]) << 5 | record[2];
        std::memcpy(record + 4, &value, sizeof value);
    }
    return 0;
}

int open_and_watch(const char *path, int flags, unsigned mode)
{
    const int descriptor = next_open(path, flags, mode);
    if (std::strcmp(path, "/dev/mdio") == 0) {
        watched = descriptor;
        if (log_file != NONE) {
            char line[64];
            log_line(line, snprintf(line, sizeof line, "open %x%s\n", static_cast<unsigned>(flags),
                                    descriptor < 0 ? " failed" : ""));
        }
    }
    return descriptor;
}

unsigned mode_argument(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, unsigned) : 0;
}

} // namespace

extern "C" int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = mode_argument(flags, arguments);
    va_end(arguments);
    return open_and_watch(path, flags, mode);
}

extern "C" int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const unsigned mode = mode_argument(flags, arguments);
    va_end(arguments);
    return open_and_watch(path, flags, mode);
}

extern "C" int close(int descriptor)
{
    if (descriptor == watched && descriptor >= 0) {
        watched = NONE;
        if (log_file != NONE) {
            log_line("close\n", 6);
        }
    }
    return next_close(descriptor);
}

extern "C" int ioctl(int descriptor, unsigned long number, ...)
{
    va_list arguments;
    va_start(arguments, number);
    void *const argument = va_arg(arguments, void *);
    va_end(arguments);
    if (number == REQUEST && descriptor == watched && descriptor >= 0) {
        return answer(static_cast<unsigned char *>(argument));
    }
    return next_ioctl(descriptor, number, argument);
}
