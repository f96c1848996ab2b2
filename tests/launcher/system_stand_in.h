#pragma once

#include <functional>
#include <string>
#include <vector>

/*
 * Stand-ins for the C library's system log and shell, linked into the launcher's tests in place of
 * the real ones. Each call appends one line to a journal, so that a test compares the calls and
 * their order:
 *
 *   openlog KVX_daemon 1 8
 *   syslog 6 TEXT
 *   closelog
 *   system COMMAND
 */

/* The journal so far; empties it. */
std::vector<std::string> take_system_calls();

/* Called with each record from now on; an empty one ends that. */
void on_record(std::function<void()> function);
