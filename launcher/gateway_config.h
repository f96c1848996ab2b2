#pragma once

/* What the configuration selects; see read_config. */
inline constexpr unsigned PROTOCOL_NONE = 0;
inline constexpr unsigned PROTOCOL_SIP = 1;
inline constexpr unsigned PROTOCOL_H248 = 2;
inline constexpr unsigned PROTOCOL_FXO = 3;

/* Bytes; a larger file is not read. */
inline constexpr int GATEWAY_CONFIG_SIZE_LIMIT = 4194304;

/*
 * Reads the gateway's XML configuration: which signalling protocol is active.
 *
 * path: the file. protocol: receives the selector of the last "Active_protocol" child of the root;
 * its "protocol" attribute reads "sip", "h.248" or "fxo", and any other text, or none, counts as
 * SIP.
 *
 * Returns 1 when the file was read, 0 when not: the other way round than the rest of the program.
 * Without an "Active_protocol" child, and after a failed load, *protocol keeps its value. Reports
 * on standard output, the missing root element on standard error. Throws nothing. Any thread.
 */
int read_config(const char *path, unsigned *protocol);
