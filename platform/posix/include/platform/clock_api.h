// The clocks. A test that links clocks of its own defines all of them.
#pragma once

#include "platform/types_api.h"

// NOLINTBEGIN(readability-identifier-naming): the names are Windows'.
struct SYSTEMTIME {
  WORD wYear;
  WORD wMonth;      // 1 to 12
  WORD wDayOfWeek;  // 0 is Sunday
  WORD wDay;
  WORD wHour;
  WORD wMinute;
  WORD wSecond;
  WORD wMilliseconds;
};
using LPSYSTEMTIME = SYSTEMTIME*;

/// Milliseconds of a clock that never goes back; begins again at 0 after 2^32 of them.
DWORD GetTickCount();

/// Blocks the thread for `milliseconds`, however many signals arrive meanwhile.
void Sleep(DWORD milliseconds);

/// Fills `time` with one reading of the local time. The time zone is read once, at the first call.
void GetLocalTime(LPSYSTEMTIME time);
// NOLINTEND(readability-identifier-naming)
