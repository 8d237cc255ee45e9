// Windows Sockets 2 as the system has them, and the text of their errors.
#pragma once

#include <string>

#include "platform/types_api.h"

namespace svcinst {

/// The system's text for `code`, a code of WSAGetLastError, without its line end.
std::string socket_error_text(int code);

}  // namespace svcinst
