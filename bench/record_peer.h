// What a record is compared with: spdlog with a pattern that gives the same bytes.
#pragma once

#include <string>

namespace svcinst::bench {

/// A logger that appends to the file at `path`, buffered as the C library buffers files.
void open_peer_file(const std::string& path);

/// A logger that writes each record to standard output by one fwrite, which nothing flushes.
void open_peer_console();

/// The record of `service` and `waits`, to the logger opened last.
void peer_record(const char* service, int waits);

void flush_peer();

}  // namespace svcinst::bench
