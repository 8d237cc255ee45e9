// Where a finished text goes: to the first sink that is open, and to no other.
#pragma once

#include "common/text_view.h"

namespace svcinst {

/// For levelled records: UDP peer, else TCP peer, else as raw text.
void deliver_record(TextView record);

/// For raw text: log file, else console, else nowhere.
void deliver_to_file_or_console(TextView text);

}  // namespace svcinst
