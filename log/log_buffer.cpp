#include "log/log_buffer.h"

#include <algorithm>

#include "format/format_text.h"
#include "log/log_settings.h"

namespace svcinst {

LogBuffer format_message(bool with_hex, const char* format, std::va_list arguments) {
  const auto size = static_cast<std::uint64_t>(log_settings.max);
  LogBuffer message{std::make_unique<char[]>(size)};
  OutputBuffer output{message.bytes.get(), size};
  format_text(with_hex, output, format, arguments);
  message.length = output.count;
  return message;
}

LogBuffer join(TextView prefix, TextView message) {
  const std::uint64_t length = prefix.size() + message.size();
  const auto size = std::max(static_cast<std::uint64_t>(log_settings.max), length);
  LogBuffer whole{std::make_unique<char[]>(size), length};
  prefix.copy(whole.bytes.get(), prefix.size());
  message.copy(whole.bytes.get() + prefix.size(), message.size());
  return whole;
}

}  // namespace svcinst
