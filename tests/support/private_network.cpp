#include "tests/support/private_network.h"

#include <cerrno>
#include <cstring>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

Private_Network refused(const std::string &step)
{
    return {step + ": " + std::strerror(errno)};
}

Private_Network bring_up_loopback()
{
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    const int control = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const bool up = ioctl(control, SIOCSIFFLAGS, &request) == 0;
    const Private_Network result = up ? Private_Network{} : refused("the loopback interface");
    close(control);
    return result;
}

Private_Network enter()
{
    if (unshare(CLONE_NEWNET | (geteuid() ? CLONE_NEWUSER : 0)) != 0) {
        return refused("this machine refuses a private network namespace");
    }
    return bring_up_loopback();
}

} // namespace

Private_Network enter_private_network()
{
    static const Private_Network network = enter();
    return network;
}
