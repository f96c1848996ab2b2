#pragma once

#include <string>

struct Private_Network {
    std::string refusal; /* why the kernel refused the namespace; empty when it is entered */
};

/*
 * Moves the calling thread, and what it starts from then on, into a private network namespace where
 * nothing but the loopback interface exists, every port is free and every process may use it. Once
 * entered it stays: further calls do nothing. Needs root or unprivileged user namespaces; for the
 * latter, call it while the process has one thread. In a test, give the result to SKIP_IF_REFUSED.
 */
Private_Network enter_private_network();
