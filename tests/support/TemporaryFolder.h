// TemporaryFolder: a new folder below the system's temporary one, removed with what is in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <system_error>

namespace krv::tests {

class TemporaryFolder {
 public:
    TemporaryFolder()
        : m_path(std::filesystem::temp_directory_path() /
                 ("krv-test-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directories(m_path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    // The names of its files and folders.
    [[nodiscard]] std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
    [[nodiscard]] std::string Content(const std::string& name) const {
        std::ifstream file(m_path / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

 private:
    std::filesystem::path m_path;
};

}  // namespace krv::tests
