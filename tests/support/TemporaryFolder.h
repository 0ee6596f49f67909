// TemporaryFolder: a new folder below the system's temporary one, removed with what is in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <string_view>
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
    // A file or folder in it; names are UTF-8.
    [[nodiscard]] std::filesystem::path At(const std::string& name) const {
        return m_path / std::u8string(name.begin(), name.end());
    }
    // The same as text in UTF-8.
    [[nodiscard]] std::string PathOf(const std::string& name) const {
        const std::u8string text = At(name).u8string();
        return {text.begin(), text.end()};
    }
    [[nodiscard]] bool Has(const std::string& name) const {
        return std::filesystem::exists(At(name));
    }
    [[nodiscard]] std::string Content(const std::string& name) const {
        std::ifstream file(At(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // Makes the file with this content, and returns its path.
    std::string Write(const std::string& name, std::string_view content) const {
        std::ofstream(At(name), std::ios::binary) << content;
        return PathOf(name);
    }

 private:
    std::filesystem::path m_path;
};

}  // namespace krv::tests
