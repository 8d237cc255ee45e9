#include "log/log_record.h"

#include "common/byte_string.h"
#include "format/digits.h"
#include "format/number_text.h"
#include "log/log_buffer.h"
#include "log/log_settings.h"
#include "log/log_sinks.h"
#include "platform/clock_api.h"
#include "platform/process_api.h"

namespace svcinst {
namespace {

// The prefix while it is built. With every field at its longest it has fewer than 150 bytes.
struct Prefix {
  char bytes[256];
  std::uint64_t length = 0;
};

void append(Prefix& prefix, TextView text) {
  text.copy(prefix.bytes + prefix.length, text.size());
  prefix.length += text.size();
}

void append_fill(Prefix& prefix, std::uint64_t length, std::uint64_t width, char fill) {
  for (; length < width; ++length) prefix.bytes[prefix.length++] = fill;
}

// Puts `text` behind the prefix, and before it as many `fill` as bring it to `width` bytes.
void append_padded(Prefix& prefix, const ByteString& text, std::uint64_t width, char fill) {
  append_fill(prefix, text.length, width, fill);
  append(prefix, view(text));
}

void append_number(Prefix& prefix, std::uint64_t value, std::uint64_t width, char fill) {
  const std::uint64_t length = decimal_length(value);
  append_fill(prefix, length, width, fill);
  prefix.length += length;
  write_decimal(prefix.bytes + prefix.length, value);
}

void append_date_and_time(Prefix& prefix) {
  SYSTEMTIME now;
  GetLocalTime(&now);
  append_number(prefix, now.wYear, 4, '0');
  char* const rest = prefix.bytes + prefix.length;
  append(prefix, "-00-00 00:00:00.000");
  write_decimal(rest + 3, now.wMonth);
  write_decimal(rest + 6, now.wDay);
  write_decimal(rest + 9, now.wHour);
  write_decimal(rest + 12, now.wMinute);
  write_decimal(rest + 15, now.wSecond);
  write_decimal(rest + 19, now.wMilliseconds);
}

// Decimal text with "," between groups of three digits, counted from the right.
ByteString grouped(std::int64_t value) {
  const ByteString digits = i64_to_dec(value);
  ByteString text;
  resize(text, digits.length + (digits.length - 1) / 3, ',');
  char* next = text.data;
  for (std::uint64_t left = digits.length; left > 0; --left) {
    if (left != digits.length && left % 3 == 0) ++next;
    *next++ = digits.data[digits.length - left];
  }
  return text;
}

void append_elapsed_time(Prefix& prefix) {
  const std::int64_t now = monotonic_nanoseconds();
  append_padded(prefix, grouped((now - start_time_ns) / 1000), 15, '0');
  append(prefix, " us =+");
  append_padded(prefix, grouped((now - last_record_time_ns) / 1000), 12, ' ');
  append(prefix, " us");
}

void append_thread(Prefix& prefix) {
  append(prefix, "0x");
  append_padded(prefix, u64_to_hex(GetCurrentThreadId(), true, false), 8, '0');
}

void append_separator(Prefix& prefix) {
  if (prefix.length > 1) append(prefix, "|");
}

Prefix make_prefix(std::int32_t level) {
  Prefix prefix;
  append(prefix, "[");
  if (log_settings.time) {
    append_separator(prefix);
    append_date_and_time(prefix);
  }
  if (log_settings.cpu) {
    append_separator(prefix);
    append_elapsed_time(prefix);
  }
  if (log_settings.thread) {
    append_separator(prefix);
    append_thread(prefix);
  }
  if (log_settings.count) {
    append_separator(prefix);
    append_number(prefix, record_counter, 4, ' ');
  }
  append_separator(prefix);
  append(prefix, level_tags[level]);
  append(prefix, "] ");
  return prefix;
}

}  // namespace

std::int32_t log_record(std::int32_t level, const char* format, std::va_list arguments) {
  if (!log_settings.enable_log || level < log_settings.mini_level) return 0;
  const Prefix prefix = make_prefix(level);
  ++record_counter;
  const LogBuffer message = format_message(log_settings.with_hex, format, arguments);
  const LogBuffer record = join({prefix.bytes, prefix.length}, view(message));
  last_record_time_ns = monotonic_nanoseconds();
  deliver_record(view(record));
  return static_cast<std::int32_t>(record.length);
}

}  // namespace svcinst
