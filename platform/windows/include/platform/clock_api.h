// The clocks: `GetTickCount`, `Sleep`, `SYSTEMTIME` and `GetLocalTime` are the system's.
#pragma once

#include "platform/types_api.h"
