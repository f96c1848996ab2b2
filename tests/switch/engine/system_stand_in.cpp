#include "tests/switch/engine/system_stand_in.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

Memory_Opens memory_opens;
Sleeps sleeps;

namespace
{

int open_in_kernel(const char *path, int flags, mode_t mode)
{
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int open_memory(int flags)
{
    memory_opens.count++;
    memory_opens.flags = flags;
    if (memory_opens.refused) {
        errno = EACCES;
        return -1;
    }
    memory_opens.descriptor = open_in_kernel("/dev/null", O_RDWR, 0);
    return memory_opens.descriptor;
}

} // namespace

extern "C" int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return std::strcmp(path, "/dev/mem") == 0 ? open_memory(flags)
                                              : open_in_kernel(path, flags, mode);
}

extern "C" int nanosleep(const timespec *asked, timespec *left)
{
    sleeps.asked.push_back(*asked);
    if (sleeps.interruptions == 0) {
        return 0;
    }
    sleeps.interruptions--;
    *left = *asked;
    left->tv_nsec -= 1;
    errno = EINTR;
    return -1;
}
