#include "launcher/start_gateway.h"

#include "launcher/event_log.h"
#include "launcher/gateway_config.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace
{

constexpr const char *ALARM_COMMAND = "/root/gpio_set_value alarm on";

struct Launch {
    unsigned protocol;
    const char *record;
    const char *command;
};

/* Commands are byte for byte what the board's programs expect: two end in a blank, and the FXS/FXO
 * program reads a configuration of its own and runs at a lower priority boost than the others. */
constexpr Launch LAUNCHES[] = {
    {PROTOCOL_SIP, "start SIP protocol", "nice -n -20 /tmp/kvx_ctrl_4 -daemon > /dev/null"},
    {PROTOCOL_H248, "start H.248 protocol",
     "nice -n -20 /root/kvx_megaco_rt -c /tmp/config.xml -i /root/ini.ini -d "},
    {PROTOCOL_FXO, "start FXS FXO coupled mode",
     "nice -n -10 /root/fxs_fxo_connect -c /root/config.xml -i /root/fxo.ini -d "},
};

using Signal_Handler = void (*)(int);

void run_command(const char *command, Signal_Handler inherited)
{
    std::fflush(stdout);
    std::signal(SIGPIPE, inherited);
    [[maybe_unused]] const int ignored = std::system(command);
    std::signal(SIGPIPE, SIG_IGN);
}

} // namespace

int start_gateway(const char *config_path, unsigned *protocol)
{
    const Signal_Handler inherited = std::signal(SIGPIPE, SIG_IGN);
    if (!read_config(config_path, protocol)) {
        run_command(ALARM_COMMAND, inherited);
        return 1;
    }
    for (const Launch &launch : LAUNCHES) {
        if (*protocol == launch.protocol) {
            log_message(launch.record);
            run_command(launch.command, inherited);
        }
    }
    std::puts("UDP Server Started");
    return 0;
}
