// Stands in for each of the C library's mathematical functions that SQLite's archive asks for, in
// the executable that is shipped: see app/CMakeLists.txt.
#include <limits>

/// What is not a number is NULL in SQL.
extern "C" double no_mathematics() {
  return std::numeric_limits<double>::quiet_NaN();
}
