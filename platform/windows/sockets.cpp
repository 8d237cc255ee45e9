#include "platform/socket_api.h"

namespace svcinst {

ErrorText socket_error_text(int code) {
  ErrorText error{};
  DWORD length =
      FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     static_cast<DWORD>(code), 0, error.text, sizeof error.text, nullptr);
  for (; length > 0 && static_cast<unsigned char>(error.text[length - 1]) <= ' '; --length)
    error.text[length - 1] = '\0';
  return error;
}

}  // namespace svcinst
