#include "launcher/daemon.h"

#include <cstdio>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/* The messages of all three failures speak of fork; that is meant. */

void leave_parent_behind()
{
    fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) {
        printf("KVX_Ctrl: can't fork: parpip=%d - Failed\n", child);
        exit(EXIT_FAILURE);
    }
    if (child > 0) {
        exit(EXIT_SUCCESS);
    }
}

pid_t start_session()
{
    const pid_t session = setsid();
    if (session < 0) {
        printf("KVX_Ctrl: can't fork: sid=%d - Failed\n", session);
        exit(EXIT_FAILURE);
    }
    return session;
}

bool write_id(const char *path, pid_t session)
{
    FILE *file = fopen(path, "wt");
    if (!file) {
        return false;
    }
    const bool written = fprintf(file, "%d", session) > 0;
    return fclose(file) == 0 && written;
}

void write_id_file(const char *path, pid_t session)
{
    if (!write_id(path, session)) {
        printf("KVX_Ctrl: can't fork: fopen(\"%s\",...) - Failed\n", path);
        exit(EXIT_FAILURE);
    }
}

} // namespace

int KVX_Ctrl(const char *id_file, const char * /*text*/)
{
    leave_parent_behind();
    umask(0);
    write_id_file(id_file, start_session());
    /* The descriptor only, and nothing is opened in its place; output stays connected. Meant. */
    close(STDIN_FILENO);
    return 1;
}
