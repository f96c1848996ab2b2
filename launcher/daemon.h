#pragma once

/*
 * Turns the process into a background daemon with a session of its own, and writes the session id,
 * which is the daemon's process id, into id_file: in decimal, without a line feed; the file is
 * created or emptied.
 *
 * Returns 1 in the daemon. Its file-creation mask is then 0 and its descriptor 0 is closed;
 * standard output, standard error and the working directory are those of the caller. It does not
 * return in any other case: the calling process ends with 0 as soon as the daemon process exists,
 * whatever becomes of that; a step that fails, the writing of the whole id among them, prints a
 * message on standard output and ends its process with status 1. All streams are flushed first, so
 * that nothing buffered is written twice.
 *
 * text: not examined, may be null. Call it before another thread is started: the daemon has only
 * the calling one.
 */
int KVX_Ctrl(const char *id_file, const char *text = nullptr);
