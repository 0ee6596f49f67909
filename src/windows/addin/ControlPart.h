// What the toolbar control keeps, as the custom XML part in which a document carries it:
//
//     <toolbar xmlns="urn:tallyport:tql-krv:toolbar" version="1" bytes="1234">BASE64</toolbar>
//
// The content is a property bag's. docs/file-formats.md describes it. Documents come from anywhere.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace krv::windows {

inline constexpr const char* PartNamespace = "urn:tallyport:tql-krv:toolbar";

[[nodiscard]] std::string EncodePart(std::span<const std::byte> contents);
// Throws Error 321, saying what is wrong, for a part that EncodePart doesn't write, however the
// host has written its XML anew.
[[nodiscard]] std::vector<std::byte> DecodePart(std::string_view xml);

}  // namespace krv::windows
