#include "platform/socket_api.h"

namespace svcinst {

ErrorText socket_error_text(int code) {
  ErrorText error{};
  // FORMAT_MESSAGE_MAX_WIDTH_MASK: one line, without the line end.
  FormatMessageA(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
      nullptr, static_cast<DWORD>(code), 0, error.text, sizeof error.text, nullptr);
  return error;
}

}  // namespace svcinst
