#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace kavrelon {

/// A folder for one test's files, removed at the end.
class TestFolder {
  public:
    explicit TestFolder(const std::string& name) : path_(std::filesystem::temp_directory_path() / name) {
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TestFolder() { std::filesystem::remove_all(path_, ignored_); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string file(const std::string& name) const { return (path_ / name).string(); }
    std::string read(const std::string& name) const {
        std::ifstream in(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    void write(const std::string& name, std::string_view bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
    }

  private:
    std::filesystem::path path_;
    std::error_code ignored_;
};

}  // namespace kavrelon
