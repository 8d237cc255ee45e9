// Windows Sockets 2 as the system has them, and the text of their errors.
#pragma once

#include "platform/types_api.h"

namespace svcinst {

struct ErrorText {
  char text[256];  // NUL-terminated
};

/// The system's text for `code`, a code of WSAGetLastError, without its line end.
ErrorText socket_error_text(int code);

}  // namespace svcinst
