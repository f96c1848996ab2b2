#pragma once

/* Stand-ins for the C library's fork() and setsid(), linked into the daemon's tests in place of the
 * real ones, which they call unless they are to fail. */

void refuse_fork();
void refuse_session();
