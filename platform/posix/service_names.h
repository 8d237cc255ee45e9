// Which names the Service Control Manager allows and which it takes for the same.
#pragma once

namespace svcinst {

/// True for 1 to 256 characters (UTF-16 units) without a slash of either kind. name: may be null.
bool is_service_name(const char* name);

/// True for at most 256 characters (UTF-16 units). name: null for none.
bool is_display_name(const char* name);

/// A collation of the database: orders two UTF-8 names without regard to case. Lengths in bytes.
int compare_names(void* unused, int left_length, const void* left, int right_length,
                  const void* right);

}  // namespace svcinst
