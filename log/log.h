/* The logger, for the program itself and for code that is loaded into it:
 *
 *     #include <svcinst/log.h>
 *     set_log2file("agent.log", 9);
 *     log_info("%s has %u clients\n", "agent", 3);
 *
 * The executable exports these functions under these names. On Windows only code inside it
 * can link its import library; a program of its own that does so crashes at its first call.
 *
 * A format follows this system's own rules, which are not printf's: see docs/format-strings.md. It
 * has to get the arguments that its directives ask for, and no compiler checks that: with one too
 * few, as without a format, a call crashes or writes what lies in memory.
 *
 * All callers share one configuration, which lives as long as the process and holds its defaults
 * when the first call arrives, even before main runs. Calls may come from any thread; each runs as
 * a whole, but for the connecting to a peer, so a setter waits for a log call that is under way.
 * Nothing is reported to callers. When memory runs out, std::bad_alloc leaves the function. A
 * length is counted modulo 2^32.
 *
 * A call waits for ever
 * - in a signal handler or crash filter that may interrupt another one;
 * - in what the logger itself calls: a replaced fopen, the write function of a stream;
 * - while its thread holds the lock of stdout (flockfile) and another thread logs;
 * - in a child of fork() before it executes a program, when another thread was logging;
 * - at the process's end on Windows, in DllMain (DLL_PROCESS_DETACH) and in the destructors of a
 *   DLL's static objects, when another thread was logging (seen under wine);
 * - when it opens a FIFO that nobody reads as log file: then every other thread's, too.
 * The two that connect to a peer are not for DllMain: Windows allows no WSAStartup there.
 *
 * Records are torn or lost
 * - in a pipe, when a signal handler is set without SA_RESTART, and when it is non-blocking;
 * - in a file, when its file system was full in between;
 * - on the way to a UDP peer: the first one when that has come back, and those above 64 kB. */
#ifndef SVCINST_LOG_LOG_H
#define SVCINST_LOG_LOG_H

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Write one record at a level: info 0, note 1, warn 2, error 3, fatal 4 (which stops nothing). A
 * record is "[", the fields that are switched on, the coloured level tag, "] " and the formatted
 * message; a line feed ends it only where the format has one. It goes to the UDP peer, else the TCP
 * peer, else the log file, else the console, which is standard output.
 * format: NUL-terminated; what it formats beyond the bytes of set_max() is dropped.
 * Return the length of the record in bytes, whether or not a sink took it; 0 when logging is off or
 * the level is below the lowest one written. */
int log_info(const char* format, ...);
int log_note(const char* format, ...);
int log_warn(const char* format, ...);
int log_error(const char* format, ...);
int log_fatal(const char* format, ...);

/** Writes the formatted text as it is, without a prefix, to the log file, else to the console;
 * never to a network peer. No level filters it, and it takes no record number. format: as above.
 * Returns the text's length in bytes, whether or not a sink took it; 0 while logging is off. */
int log_it(const char* format, ...);

/** Switches logging on or off (default on). While it is off, log calls write nothing and the four
 * set_log2 functions change nothing; open sinks stay open. Switching on writes one announcement
 * line with log_it() and returns its length in bytes; switching off returns 0. */
int set_enable(bool enable);

/** Sets the size in bytes of a formatted message (default 1024). 0 and less change nothing. */
void set_max(int max);

/** Shows unprintable bytes of %c and %s in records with their codes (default off). */
void set_with_hex(bool with_hex);

/** Flushes the log file or standard output after each text (default off). */
void set_flush(bool flush);

/** Writes a line feed after each text on the console, and only there (default off). */
void set_auto_endline(bool auto_endline);

/** Sets the lowest level that is written (default 0); above 4 drops every record. */
void set_mini_level(int level);

/** Switch fields of the prefix on or off. They stand in this order: local date and time (on by
 * default); microseconds since start-up and since the last record; thread's id; record's number. */
void set_time(bool time);
void set_cpu(bool cpu);
void set_thread(bool thread);
void set_count(bool count);

/** Chooses the console by the id of its process. 0: this process, its standard output fully
 * buffered with 4096 bytes. UINT64_MAX: none. Any other: that process's console; on Linux texts
 * then go to the caller's own standard output all the same. */
void set_log2cmd(uint64_t std_handle);

/** Closes the log file and opens another one, to append to it. A file that cannot be opened leaves
 * none, and texts go on to the console: ("", 0) only closes.
 * name: copied; need not end with a NUL. length: bytes of it, 0 to 255; others change nothing. */
void set_log2file(const char* name, int length);

/** Connect to a TCP or UDP peer, which then receives each record by one send, with nothing added.
 * Without effect once a peer of that kind is connected; a failed attempt may be repeated. A peer
 * that has gone is never replaced, and its records are lost. TCP waits for the connection one
 * second at most, which stops no other call; a peer that doesn't read stops every thread's.
 * address: NUL-terminated dotted IPv4 text; port: in the byte order of this machine. */
void set_log2tcp(const char* address, uint16_t port);
void set_log2udp(const char* address, uint16_t port);

#ifdef __cplusplus
}
#endif

#endif
