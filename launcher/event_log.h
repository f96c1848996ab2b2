#pragma once

/*
 * The gateway's event log. Each routine composes one text and sends it to the system log as one
 * record: ident "KVX_daemon" with the process id, facility LOG_USER, priority LOG_INFO. The log is
 * opened and closed around every record.
 *
 * Texts are NUL-terminated and not null. A composed text longer than the routine's capacity is cut
 * to it: 999 characters for the routines that name a line, 9999 for the others.
 *
 * The composed text is itself the format of the system-log call, so a per-cent sign in it is
 * interpreted there: callers pass texts without per-cent signs.
 *
 * Any thread may call; no lock is taken.
 */

/* "[line %d][number %s]<->[%s] - %s" filled with line, number, peer, message: the peer is printed
 * before the message although it is the last argument. */
void log_call_event(int line, const char *number, const char *message, const char *peer);

/* "[line %d][number %s] - %s" */
void log_number_event(int line, const char *number, const char *message);

/* "[to channel %d]%s %s" */
void log_channel_event(int channel, const char *first, const char *second);

/* "%s %s" */
void log_pair(const char *first, const char *second);

/* "[line %d] - %s" */
void log_line_event(int line, const char *message);

/* The message unchanged. The only routine that also writes its text, and a line feed, to standard
 * output; it does so before the record is sent. */
void log_message(const char *message);
