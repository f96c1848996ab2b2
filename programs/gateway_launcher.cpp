/* The process entry of the board: the gateway's start-up, then the end. */

#include "launcher/gateway_config.h"
#include "launcher/start_gateway.h"
#include "programs/arguments.h"

namespace
{

constexpr Program PROGRAM = {
    "gateway_launcher",
    "usage: gateway_launcher\n"
    "\n"
    "Starts the protocol program that /tmp/config.xml selects, or raises the alarm when the file\n"
    "cannot be read. Exit status 0 when it was read, else 1.\n"
    "\n"
    "  --help     print this text\n"
    "  --version  print the version\n"
    "\n"
    "These two count only alone; any other argument still starts the gateway.\n"};

} // namespace

/* A stray argument in a boot script must cost nobody the gateway. */
int main(int count, char **arguments)
{
    if (count == 2 && AnswerQuestion(PROGRAM, arguments[1])) {
        return 0;
    }
    static unsigned protocol = PROTOCOL_NONE;
    return start_gateway(GATEWAY_CONFIG_PATH, &protocol);
}
