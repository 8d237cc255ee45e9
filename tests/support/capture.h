// What a test catches and cleans up: the process's standard output and a directory for its files.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace svcinst {

/// The bytes of a file; empty when there is none.
inline std::string file_bytes(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

/// A new empty directory that goes, with all that is in it, together with this object.
class TempDirectory {
 public:
  TempDirectory() { std::filesystem::create_directory(directory_); }
  TempDirectory& operator=(TempDirectory&&) = delete;  // nor any copy
  ~TempDirectory() { std::filesystem::remove_all(directory_, ignored_); }
  [[nodiscard]] std::string path(const std::string& name) const {
    return (directory_ / name).string();
  }

 private:
  std::filesystem::path directory_ = std::filesystem::temp_directory_path() /
                                     ("svcinst-" + std::to_string(std::random_device()()));
  std::error_code ignored_;  // Windows keeps a program that still runs
};

/// While it lives, file descriptor 1 is a temporary file. One object at a time. When the test has
/// failed, what the file holds is written out: the framework's report is in it, too.
class CapturedStdout {
 public:
  CapturedStdout() {
    std::fflush(stdout);
    const int file = open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
    dup2(file, STDOUT_FILENO);
    close(file);
  }
  CapturedStdout& operator=(CapturedStdout&&) = delete;  // nor any copy
  ~CapturedStdout() {
    std::fflush(stdout);
    dup2(old_descriptor_, STDOUT_FILENO);
    close(old_descriptor_);
    if (testing::Test::HasFailure()) std::fputs(file_bytes(path_).c_str(), stdout);
  }
  /// All bytes written to the descriptor so far. `stdout` is flushed first unless told otherwise.
  [[nodiscard]] std::string bytes(bool flush_first = true) const {
    if (flush_first) std::fflush(stdout);
    return file_bytes(path_);
  }

 private:
  TempDirectory directory_;
  std::string path_ = directory_.path("stdout");
  int old_descriptor_ = dup(STDOUT_FILENO);
};

}  // namespace svcinst
