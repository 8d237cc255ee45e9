// A lock that nothing sets up or takes down: `SRWLOCK`, the system's.
#pragma once

#include "platform/types_api.h"
