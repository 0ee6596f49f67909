#include "common/files/ModificationTime.h"

#include <windows.h>

namespace krv::files {

// The standard library's date has whole seconds here: too coarse to notice that a file was written
// again right after it was read.
std::int64_t ModificationTicks(const std::filesystem::path& path, std::error_code& error) noexcept {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == 0) {
        error = std::error_code(static_cast<int>(GetLastError()), std::system_category());
        return 0;
    }
    error.clear();
    const std::uint64_t high = data.ftLastWriteTime.dwHighDateTime;
    return static_cast<std::int64_t>((high << 32U) | data.ftLastWriteTime.dwLowDateTime);
}

}  // namespace krv::files
