#include "log/console_sink.h"

#include <cstdio>

#include "log/log_settings.h"
#include "platform/process_api.h"

namespace svcinst {

void open_console(std::uint64_t std_handle) {
  log_settings.std_handle = std_handle;
  if (std_handle == kNoConsole) return;
  if (std_handle == 0) {
    log_settings.std_handle = GetCurrentProcessId();
    std::setvbuf(stdout, stdout_buffer, _IOFBF, kStdoutBufferSize);
    return;
  }
  FreeConsole();
  AttachConsole(static_cast<DWORD>(std_handle));
}

void write_to_console(TextView text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  if (log_settings.auto_endline) std::putchar('\n');
  if (log_settings.flush) std::fflush(stdout);
}

}  // namespace svcinst
