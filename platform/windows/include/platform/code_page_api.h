// Code pages, all of them the system's; `___lc_codepage_func` is the runtime library's.
#pragma once

#include <locale.h>

#include "platform/types_api.h"
