// Levelled records with the default prefix, to a file and to the console, beside spdlog with a
// pattern that gives the same bytes.
#include <spdlog/details/null_mutex.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "bench/measure.h"
#include "log/log.h"

namespace svcinst::bench {
namespace {

constexpr const char* kPattern = "[%Y-%m-%d %H:%M:%S.%e|\033[36;40m%l\033[0m] %v";

// Writes each record to standard output by one fwrite, which nothing flushes.
class ConsoleSink : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
  void sink_it_(const spdlog::details::log_msg& message) override {
    spdlog::memory_buf_t text;
    formatter_->format(message, text);
    std::fwrite(text.data(), 1, text.size(), stdout);
  }
  void flush_() override {}
};

std::unique_ptr<spdlog::logger> logger;

void record_ours() {
  log_info("service '%s' was stopped, %d waits of a second had passed\n", "hello", 3);
}

void record_peer() {
  logger->info("service '{}' was stopped, {} waits of a second had passed", "hello", 3);
}

void use(spdlog::sink_ptr sink) {
  logger = std::make_unique<spdlog::logger>("", std::move(sink));
  logger->set_pattern(kPattern);
}

void open_our_file(const std::string& path) {
  set_log2file(path.c_str(), static_cast<int>(path.size()));
}

void open_their_file(const std::string& path) {
  use(std::make_shared<spdlog::sinks::basic_file_sink_st>(path));
}

void open_our_console(const std::string& path) {
  set_log2file("", 0);  // closes the file, which would come first
  if (std::freopen(path.c_str(), "w", stdout) == nullptr) std::abort();
  set_log2cmd(0);
}

void open_their_console(const std::string& path) {
  open_our_console(path);  // with the same buffer
  use(std::make_shared<ConsoleSink>());
}

struct Contestant {
  void (*open)(const std::string& path);
  void (*record)();
  bool is_file;
};

constexpr Contestant kOurFile = {open_our_file, record_ours, true};
constexpr Contestant kTheirFile = {open_their_file, record_peer, true};
constexpr Contestant kOurConsole = {open_our_console, record_ours, false};
constexpr Contestant kTheirConsole = {open_their_console, record_peer, false};

// What a contestant makes of one record.
std::string record_text(const Contestant& contestant, const std::string& path) {
  contestant.open(path);
  contestant.record();
  std::fflush(nullptr);
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  std::filesystem::remove(path);
  return text.str();
}

// Both write within one millisecond sooner or later.
bool same_text(const Contestant& ours, const Contestant& theirs, const std::string& path) {
  std::string text;
  for (int attempt = 0; attempt < 1000; ++attempt) {
    text = record_text(ours, path);
    if (!text.empty() && text == record_text(theirs, path)) return true;
  }
  return false;
}

// The file loses its name at once: contestants that take turns would go on in each other's.
void records(benchmark::State& state, const Contestant& measured, const Contestant& other,
             const char* zone) {
  setenv("TZ", zone, 1);
  tzset();
  const std::string path =
      std::filesystem::temp_directory_path() / ("svcinst-bench." + std::to_string(getpid()));
  const bool same = same_text(measured, other, path);
  measured.open(measured.is_file ? path : "/dev/null");
  std::filesystem::remove(path);
  measure(state, same, measured.record);
}

constexpr const char* kZone = "Europe/Berlin";

BENCHMARK_CAPTURE(records, , kOurFile, kTheirFile, "UTC")->Name("record-file/ours");
BENCHMARK_CAPTURE(records, , kTheirFile, kOurFile, "UTC")->Name("record-file/spdlog");
BENCHMARK_CAPTURE(records, , kOurFile, kTheirFile, kZone)->Name("record-file-zone/ours");
BENCHMARK_CAPTURE(records, , kTheirFile, kOurFile, kZone)->Name("record-file-zone/spdlog");
BENCHMARK_CAPTURE(records, , kOurConsole, kTheirConsole, "UTC")->Name("record-console/ours");
BENCHMARK_CAPTURE(records, , kTheirConsole, kOurConsole, "UTC")->Name("record-console/spdlog");

}  // namespace
}  // namespace svcinst::bench
