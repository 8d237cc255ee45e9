// Where a finished text goes: to the first sink that is open, and to no other.
#pragma once

#include "common/text_view.h"

namespace svcinst {

/// For levelled records: UDP peer, else TCP peer, else log file, else console, else nowhere.
void deliver_record(TextView record);

/// For raw text, which no network peer gets: log file, else console, else nowhere.
void deliver_raw(TextView text);

}  // namespace svcinst
