// On Windows the runtime library's code page can't be UTF-8; the tests' is, as it is elsewhere.
extern "C" {
unsigned int ___lc_codepage_func() {
  return 65001;
}
extern unsigned int (*__imp____lc_codepage_func)();
unsigned int (*__imp____lc_codepage_func)() = ___lc_codepage_func;
}
