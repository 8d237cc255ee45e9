// Loaded into the tool before that has started up. Says hello once an exception and a cancelled
// thread have left log calls, which takes one C++ runtime, and no standard descriptor was handed
// out.
#include <pthread.h>
#include <svcinst/log.h>
#include <sys/resource.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <exception>
#include <new>
#include <thread>

[[gnu::constructor]] static void say_hello() {
  const rlimit limit{1 << 30, 1 << 30};  // bytes
  setrlimit(RLIMIT_AS, &limit);
  set_max(INT_MAX);
  try {
    log_note("too long\n");
    std::abort();
  } catch (const std::bad_alloc&) {
    set_max(1024);
  }
  set_log2file("/dev/null", 9);
  set_flush(true);
  std::thread([] {
    pthread_cancel(pthread_self());
    log_it("writes, which is where a cancelled thread ends");
    std::abort();
  }).join();
  set_log2file("", 0);
  set_count(true);
  if (std::uncaught_exceptions() == 0 && dup(STDOUT_FILENO) > STDERR_FILENO)
    log_note("hello from the plug-in\n");
}
