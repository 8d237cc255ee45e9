// Where the service database lies.
#pragma once

#include <string>

namespace svcinst {

/// SVCINST_DATABASE when it is set, /var/lib/svcinst/services.db for root, and otherwise
/// svcinst/services.db in the user's state folder (XDG_STATE_HOME or ~/.local/state). Empty when
/// the user has no such folder.
std::string database_path();

/// Makes the folders that `path` is to lie in. False when the user can't add files to the last one.
bool prepare_folder(const std::string& path);

}  // namespace svcinst
