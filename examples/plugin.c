/* A library that logs through the tool's own logger once it has been loaded into it. On Linux,
 * in the folder that `cmake --install` has filled:
 *     cc -shared -fPIC -Iinclude share/doc/svcinst/examples/plugin.c -o plugin.so
 *     LD_PRELOAD=./plugin.so bin/svcinst
 * With MinGW, in the unpacked zip:
 *     x86_64-w64-mingw32-gcc -shared -Iinclude examples/plugin.c lib/libsvcinst.dll.a -o plugin.dll
 * svcinst.exe loads no library by itself: a debugger does, say, or a program that starts it
 * suspended.
 */
#include <svcinst/log.h>

__attribute__((constructor)) static void say_hello(void) {
  set_count(true);
  log_note("%s from the plug-in\n", "hello");
}
