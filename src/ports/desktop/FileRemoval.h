// Deletes files that the program has written. Paths are UTF-8.
#pragma once

#include <string>

namespace krv::ports {

class FileRemoval {
 public:
    virtual ~FileRemoval() = default;
    // Clears the file's attributes, such as read-only and hidden. Throws Error 53 when there is no
    // such file, 75 when the attributes can't be changed.
    virtual void ClearAttributes(const std::string& path) = 0;
    // Throws Error 53 when there is no such file, 75 when it can't be deleted.
    virtual void Delete(const std::string& path) = 0;
};

}  // namespace krv::ports
