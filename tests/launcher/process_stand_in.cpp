#include "tests/launcher/process_stand_in.h"

#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

bool fork_refused = false;
bool session_refused = false;

pid_t refuse(int error)
{
    errno = error;
    return -1;
}

} // namespace

void refuse_fork()
{
    fork_refused = true;
}

void refuse_session()
{
    session_refused = true;
}

extern "C" {

pid_t fork() noexcept
{
    return fork_refused ? refuse(EAGAIN) : _Fork();
}

pid_t setsid() noexcept
{
    return session_refused ? refuse(EPERM) : static_cast<pid_t>(syscall(SYS_setsid));
}
}
