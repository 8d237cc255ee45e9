#include "platform/socket_api.h"

namespace svcinst {

void look_up_functions() {
  send(INVALID_SOCKET, "", 0, 0);  // fails
  WSAGetLastError();
}

std::string socket_error_text(int code) {
  char text[256];
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                static_cast<DWORD>(code), 0, text, sizeof text, nullptr);
  while (length > 0 && static_cast<unsigned char>(text[length - 1]) <= ' ') --length;
  return {text, length};
}

}  // namespace svcinst
