// Loaded into the tool before that has started up. At any moment of the start its threads are
// inside log calls: one formats, the others wait for it.
#include <svcinst/log.h>

#include <thread>

namespace {

[[gnu::constructor]] void start_threads() {
  set_count(true);
  log_note("hello from the plug-in\n");
  for (int i = 0; i < 4; ++i) {
    std::thread([] {
      for (;;) log_it("%s", "");
    }).detach();
  }
}

}  // namespace
