// The process, its threads and its console, all of them the system's.
#pragma once

#include "platform/types_api.h"
