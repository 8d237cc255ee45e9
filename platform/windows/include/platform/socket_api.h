// Windows Sockets 2 as the system has them, and the text of their errors.
#pragma once

#include <string>

#include "platform/types_api.h"

namespace svcinst {

/// Makes the first calls of `send` and WSAGetLastError. Each function's first one waits for the
/// loader's lock, which a DLL holds whose constructor logs, and may change the last error.
void look_up_functions();

/// The system's text for `code`, a code of WSAGetLastError, without its line end.
std::string socket_error_text(int code);

}  // namespace svcinst
