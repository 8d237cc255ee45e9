// The runtime library's switch: the program gets an argument such as `*` as it is, not as the names
// of files.
extern "C" {
int _dowildcard = 0;  // NOLINT(readability-identifier-naming)
}
