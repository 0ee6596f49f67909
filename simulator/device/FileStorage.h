// FileStorage: the generator's own files. Every use needs the generator's lock.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace krv::simulator {

// The file that a capture of the screen is kept in.
inline constexpr const char* ScreenCaptureFile = "DISPLAY.BMP";

class FileStorage {
 public:
    // Replaces a file of that name. Names are told apart without regard to case.
    void Put(std::string_view name, std::string bytes);
    // Null when there is none; valid until the storage changes.
    [[nodiscard]] const std::string* Find(std::string_view name) const;
    // False when there is none.
    bool Delete(std::string_view name);
    // By the names in upper case.
    [[nodiscard]] const std::map<std::string, std::string>& Files() const noexcept {
        return m_files;
    }

 private:
    std::map<std::string, std::string> m_files;
};

}  // namespace krv::simulator
