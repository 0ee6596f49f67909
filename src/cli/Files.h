// Files that the front writes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace krv::cli {

// A path as the core has it, in UTF-8.
[[nodiscard]] std::filesystem::path PathOf(const std::string& utf8);

// Both name an existing file, and the same one.
[[nodiscard]] bool AreSameFile(const std::string& left, const std::string& right);

// Each throws Error 75, with a description that names the file, when it can't be written.
void MakeFolder(const std::string& folder);
void RequireWritable(const std::string& file);
// The whole file or none of it: what was there stays until all is written.
void WriteWhole(const std::string& file, std::span<const std::byte> bytes);
void WriteText(const std::string& file, std::string_view text);
// 16-bit codes, little endian.
void WriteCodes(const std::string& file, std::span<const std::int16_t> codes);

}  // namespace krv::cli
