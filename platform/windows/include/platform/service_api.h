// The Service Control Manager, the system's own.
#pragma once

#include "platform/types_api.h"
