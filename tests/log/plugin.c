/* What code from elsewhere does with the logger: it knows the header only. */
#include "log/log.h"

int run_plugin(void);

int run_plugin(void) {
  set_count(true);
  return log_note("from plug-in %d", 1);
}
