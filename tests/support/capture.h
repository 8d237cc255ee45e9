// What a test catches and cleans up: the process's standard output and a directory for its files.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

namespace svcinst {

/// A new empty directory that goes, with all that is in it, together with this object.
class TempDirectory {
 public:
  TempDirectory();
  ~TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;
  [[nodiscard]] std::string path(const std::string& name) const {
    return (directory_ / name).string();
  }

 private:
  std::filesystem::path directory_;
};

/// While it lives, file descriptor 1 is a temporary file. Give the output up at the end of a test's
/// scope only: one object at a time.
class CapturedStdout {
 public:
  CapturedStdout();
  ~CapturedStdout();
  CapturedStdout(const CapturedStdout&) = delete;
  CapturedStdout& operator=(const CapturedStdout&) = delete;
  /// All bytes written to the descriptor so far. `stdout` is flushed first unless told otherwise.
  [[nodiscard]] std::string bytes(bool flush_first = true) const;

 private:
  TempDirectory directory_;
  std::string path_ = directory_.path("stdout");
  int old_descriptor_;
};

/// The bytes of a file; empty when there is none.
std::string file_bytes(const std::string& path);

}  // namespace svcinst
