#include "bench/record_peer.h"

#include <spdlog/details/null_mutex.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/basic_file_sink.h>

#include <cstdio>
#include <memory>

namespace svcinst::bench {
namespace {

constexpr const char* kPattern = "[%Y-%m-%d %H:%M:%S.%e|\033[36;40m%l\033[0m] %v";

class ConsoleSink : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
  void sink_it_(const spdlog::details::log_msg& message) override {
    spdlog::memory_buf_t text;
    formatter_->format(message, text);
    std::fwrite(text.data(), 1, text.size(), stdout);
  }
  void flush_() override { std::fflush(stdout); }
};

std::unique_ptr<spdlog::logger> logger;

void use(spdlog::sink_ptr sink) {
  logger = std::make_unique<spdlog::logger>("", std::move(sink));
  logger->set_pattern(kPattern);
}

}  // namespace

void open_peer_file(const std::string& path) {
  use(std::make_shared<spdlog::sinks::basic_file_sink_st>(path));
}

void open_peer_console() {
  use(std::make_shared<ConsoleSink>());
}

void peer_record(const char* service, int waits) {
  logger->info("service '{}' was stopped, {} waits of a second had passed", service, waits);
}

void flush_peer() {
  logger->flush();
}

}  // namespace svcinst::bench
