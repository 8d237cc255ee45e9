// What a test catches and cleans up: standard output and a directory for its files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

/// The bytes of a file; empty when there is none.
inline std::string file_bytes(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

/// `text` with `to` in the place of each `from`.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
    text.replace(at, from.size(), to);
  return text;
}

/// A new empty directory that goes, with all that is in it, together with this object.
struct TempDirectory {
  std::filesystem::path directory = std::filesystem::temp_directory_path() /
                                    ("svcinst-" + std::to_string(std::random_device()()));
  std::error_code ignored;  // Windows keeps a program that still runs

  TempDirectory() { std::filesystem::create_directory(directory); }
  TempDirectory& operator=(TempDirectory&&) = delete;  // nor any copy
  ~TempDirectory() { std::filesystem::remove_all(directory, ignored); }
  [[nodiscard]] std::string path(const std::string& name) const {
    return (directory / name).string();
  }
};

/// What is printed between the two calls, a check that fails there included: compare it.
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
