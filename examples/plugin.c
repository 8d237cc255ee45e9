/* Loaded into the tool before that has started up. */
#include "log/log.h"

__attribute__((constructor)) static void say_hello(void) {
  set_count(true);
  log_note("%s from the plug-in\n", "hello");
}
