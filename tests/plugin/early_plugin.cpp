// Loaded into the tool before that has started up. Says hello once exceptions and cancelled threads
// have left log calls, which takes one C++ runtime, and no standard descriptor was handed out.
#include <pthread.h>
#include <svcinst/log.h>
#include <sys/resource.h>
#include <unistd.h>

#include <climits>
#include <exception>
#include <new>

namespace {

bool exceptions_leave() {
  const rlimit limit{1 << 30, 1 << 30};  // bytes
  setrlimit(RLIMIT_AS, &limit);
  set_max(INT_MAX);
  try {
    log_note("too long\n");
    return false;
  } catch (const std::bad_alloc&) {
    set_max(1024);
    return std::uncaught_exceptions() == 0;
  }
}

void* log_cancelled(void*) {
  pthread_cancel(pthread_self());
  log_it("writes, which is where a cancelled thread ends");
  return nullptr;
}

bool cancelled_threads_leave() {
  pthread_t thread{};
  void* result = nullptr;
  set_log2file("/dev/null", 9);
  set_flush(true);
  pthread_create(&thread, nullptr, log_cancelled, nullptr);
  pthread_join(thread, &result);
  set_log2file("", 0);
  return result == PTHREAD_CANCELED;
}

[[gnu::constructor]] void say_hello() {
  set_count(true);
  if (exceptions_leave() && cancelled_threads_leave() && dup(STDOUT_FILENO) > STDERR_FILENO)
    log_note("hello from the plug-in\n");
}

}  // namespace
