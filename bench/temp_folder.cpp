#include "bench/temp_folder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace svcinst::bench {
namespace {

class TempFolder {
 public:
  TempFolder() {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_ = std::filesystem::temp_directory_path() / "svcinst-bench.XXXXXX";
};

}  // namespace

std::string temp_path(const std::string& name) {
  static const TempFolder folder;
  return folder.path() + "/" + name;
}

std::string file_bytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

}  // namespace svcinst::bench
