// TemporaryFile: a new file in the folder of temporary ones, which nobody else may read. It goes
// with this, and also where a signal ends the program at once. Not on Windows.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace krv {

class TemporaryFile {
 public:
    // Throws Error 75.
    TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    [[nodiscard]] const std::string& Path() const noexcept { return m_path; }
    // Adds the bytes. Throws Error 75.
    void Write(std::span<const std::byte> bytes) const;

    // Takes away all there are: what a signal's handler does before it ends the program.
    static void RemoveAll() noexcept;

 private:
    std::string m_path;
    int m_handle = -1;
};

}  // namespace krv
