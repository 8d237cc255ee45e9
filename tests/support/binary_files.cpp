// The Windows runtime library's switch: descriptors get bytes as they are, without a carriage
// return before each line feed.
extern "C" {
extern int _fmode;
int _fmode = 0x8000;  // _O_BINARY
}
