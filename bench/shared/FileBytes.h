// Whole files as bytes, for the documents of the bench's applications. Paths are UTF-8.
#pragma once

#include <string>

namespace krv::bench {

// Throws Error 53 when there is no such file and 75 when it can't be read; each description names
// the file.
[[nodiscard]] std::string ReadFileBytes(const std::string& path);

// Throws Error 75 when the file can't be written; the file on the disk is then as it was.
void WriteFileBytes(const std::string& path, const std::string& bytes);

// A path's last part; both kinds of slashes separate folders.
[[nodiscard]] std::string FileNameOf(const std::string& path);

}  // namespace krv::bench
