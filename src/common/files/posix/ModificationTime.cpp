#include "common/files/ModificationTime.h"

namespace krv::files {

std::int64_t ModificationTicks(const std::filesystem::path& path, std::error_code& error) noexcept {
    const auto time = std::filesystem::last_write_time(path, error);
    return error ? 0 : static_cast<std::int64_t>(time.time_since_epoch().count());
}

}  // namespace krv::files
