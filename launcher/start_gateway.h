#pragma once

inline constexpr const char *GATEWAY_CONFIG_PATH = "/tmp/config.xml";

/*
 * The gateway's start-up, once at boot: reads the configuration at config_path, logs the active
 * protocol and runs its program through the shell, or runs the alarm command when the configuration
 * cannot be read. Goes on when the shell returns; what the command did is not examined.
 *
 * protocol: the protocol selector, 0 before the call; receives what the configuration selects.
 *
 * Returns the exit status of the process: 0 when the configuration was read, else 1. What it
 * printed is flushed before each command, so that the order holds in a pipe too. A reader of its
 * lines who is gone stops nothing: the process ignores SIGPIPE from the call on, and each command
 * gets what was set before it. Single-threaded: it calls system().
 */
int start_gateway(const char *config_path, unsigned *protocol);
