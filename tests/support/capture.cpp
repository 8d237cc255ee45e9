#include "tests/support/capture.h"

#include <fcntl.h>
#include <unistd.h>

#include <fstream>
#include <random>
#include <sstream>

namespace svcinst {

TempDirectory::TempDirectory() {
  std::random_device random;
  do {
    directory_ = std::filesystem::temp_directory_path() / ("svcinst-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(directory_));
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(directory_, ignored);
}

CapturedStdout::CapturedStdout() {
  std::fflush(stdout);
  old_descriptor_ = dup(STDOUT_FILENO);
  const int file = open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(file, STDOUT_FILENO);
  close(file);
}

CapturedStdout::~CapturedStdout() {
  std::fflush(stdout);
  dup2(old_descriptor_, STDOUT_FILENO);
  close(old_descriptor_);
}

std::string CapturedStdout::bytes(bool flush_first) const {
  if (flush_first) std::fflush(stdout);
  return file_bytes(path_);
}

std::string file_bytes(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

}  // namespace svcinst
