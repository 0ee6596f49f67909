// Files that the front writes.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "common/WholeFile.h"

namespace krv::cli {

// Both name the same file, which need not exist.
[[nodiscard]] bool AreSameFile(const std::string& left, const std::string& right);

// A file and the option that names it.
struct NamedFile {
    std::string name;
    std::string file;
};
// Throws UsageError when one of the others is the file that is to be written.
void RequireOtherFiles(const NamedFile& written, std::span<const NamedFile> others);

// Each throws Error 75, with a description that names the file and the reason, when it can't be
// written. Files are written whole or not at all: what was there stays until all is written.
void MakeFolder(const std::string& folder);
void WriteWhole(const std::string& file, std::span<const std::byte> bytes);
void WriteWhole(const std::string& file, const FileWriter& write);
void WriteText(const std::string& file, std::string_view text);
// Takes a regular file away, where there is one.
void RemoveFile(const std::string& file);
// 16-bit codes, little endian.
void WriteCodes(const std::string& file, std::span<const std::int16_t> codes);

}  // namespace krv::cli
