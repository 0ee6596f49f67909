// Takes files away that the program has written. Paths are UTF-8.
#pragma once

#include <string>

namespace krv::ports {

class FileRemoval {
 public:
    virtual ~FileRemoval() = default;
    // The file is no longer read-only, hidden or anything else. Throws Error 53 when there is none,
    // 75 when that can't be done.
    virtual void ClearAttributes(const std::string& path) = 0;
    // Throws Error 53 when there is none, 75 when it can't be deleted.
    virtual void Delete(const std::string& path) = 0;
};

}  // namespace krv::ports
