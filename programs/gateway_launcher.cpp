/* The process entry of the board: the gateway's start-up, then the end. Takes no arguments. */

#include "launcher/gateway_config.h"
#include "launcher/start_gateway.h"

int main()
{
    static unsigned protocol = PROTOCOL_NONE;
    return start_gateway(GATEWAY_CONFIG_PATH, &protocol);
}
