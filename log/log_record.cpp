#include "log/log_record.h"

#include <memory>

#include "common/byte_string.h"
#include "format/digits.h"
#include "format/format_text.h"
#include "format/number_text.h"
#include "format/output_buffer.h"
#include "log/log_settings.h"
#include "log/log_sinks.h"
#include "platform/clock_api.h"
#include "platform/process_api.h"
#include "platform/steady_clock.h"

namespace svcinst {
namespace {

// With every field at its longest a prefix has fewer than 150 bytes.
constexpr std::uint64_t kPrefixSize = 256;

void store_padded(OutputBuffer& prefix, const ByteString& text, std::uint64_t width, char fill) {
  if (text.length < width) store_fill(prefix, fill, width - text.length);
  store(prefix, view(text));
}

void store_date_and_time(OutputBuffer& prefix) {
  SYSTEMTIME now;
  GetLocalTime(&now);
  char text[] = "00000-00-00 00:00:00.000|";
  write_decimal(text + 5, now.wYear);
  write_decimal(text + 8, now.wMonth);
  write_decimal(text + 11, now.wDay);
  write_decimal(text + 14, now.wHour);
  write_decimal(text + 17, now.wMinute);
  write_decimal(text + 20, now.wSecond);
  write_decimal(text + 24, now.wMilliseconds);
  store(prefix, text + (now.wYear < 10000 ? 1 : 0));
}

// Decimal text with "," between groups of three digits, counted from the right.
ByteString grouped(std::int64_t value) {
  const ByteString digits = i64_to_dec(value);
  ByteString text;
  for (std::uint64_t i = 0; i < digits.length; ++i) {
    if (i > 0 && (digits.length - i) % 3 == 0) append(text, ",");
    append(text, view(digits).substr(i, 1));
  }
  return text;
}

void store_elapsed_time(OutputBuffer& prefix) {
  const std::int64_t now = monotonic_nanoseconds();
  store_padded(prefix, grouped((now - start_time_ns) / 1000), 15, '0');
  store(prefix, " us =+");
  store_padded(prefix, grouped((now - last_record_time_ns) / 1000), 12, ' ');
  store(prefix, " us|");
}

void store_thread(OutputBuffer& prefix) {
  store(prefix, "0x");
  store_padded(prefix, u64_to_hex(GetCurrentThreadId(), true, false), 8, '0');
  store(prefix, "|");
}

void store_record_number(OutputBuffer& prefix) {
  store_padded(prefix, u64_to_dec(record_counter), 4, ' ');
  store(prefix, "|");
}

void store_prefix(OutputBuffer& prefix, LogLevel level) {
  store(prefix, "[");
  if (log_settings.time) store_date_and_time(prefix);
  if (log_settings.cpu) store_elapsed_time(prefix);
  if (log_settings.thread) store_thread(prefix);
  if (log_settings.count) store_record_number(prefix);
  store(prefix, level_tags[level]);
  store(prefix, "] ");
}

}  // namespace

std::int32_t log_record(LogLevel level, const char* format, std::va_list arguments) {
  if (!log_settings.enable_log || level < log_settings.mini_level) return 0;
  const auto max = static_cast<std::uint64_t>(log_settings.max);
  const auto block = std::make_unique_for_overwrite<char[]>(kPrefixSize + max);
  OutputBuffer record{block.get(), kPrefixSize};
  store_prefix(record, level);
  ++record_counter;
  record.size = record.count + max;
  format_text(log_settings.with_hex, record, format, arguments);
  last_record_time_ns = monotonic_nanoseconds();
  deliver_record({block.get(), record.count});
  return static_cast<std::int32_t>(record.count);
}

std::int32_t log_raw(const char* format, std::va_list arguments) {
  if (!log_settings.enable_log) return 0;
  const auto max = static_cast<std::uint64_t>(log_settings.max);
  const auto block = std::make_unique_for_overwrite<char[]>(max);
  OutputBuffer text{block.get(), max};
  format_text(false, text, format, arguments);
  deliver_to_file_or_console({block.get(), text.count});
  return static_cast<std::int32_t>(text.count);
}

}  // namespace svcinst
