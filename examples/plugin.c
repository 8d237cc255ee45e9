/* A library that logs through the tool's own logger once it has been loaded into it. On Linux:
 *     cc -shared -fPIC -Iinclude plugin.c -o plugin.so && LD_PRELOAD=./plugin.so svcinst
 * With MinGW (what loads the library into svcinst.exe is another program):
 *     x86_64-w64-mingw32-gcc -shared -Iinclude plugin.c lib/libsvcinst.dll.a -o plugin.dll
 */
#include <svcinst/log.h>

__attribute__((constructor)) static void say_hello(void) {
  set_count(true);
  log_note("%s from the plug-in\n", "hello");
}
