// A picture as a file for tests: a metafile recorded on the spot.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace krv::tests {

// A placeable metafile of 640 by 320 units, 96 an inch.
inline std::string PlaceableMetafile() {
    constexpr std::int16_t Width = 640;
    constexpr std::int16_t Height = 320;
    const HDC context = CreateMetaFileW(nullptr);
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowOrgEx(context, 0, 0, nullptr);
    SetWindowExtEx(context, Width, Height, nullptr);
    Rectangle(context, 0, 0, Width, Height);
    const HMETAFILE metafile = CloseMetaFile(context);
    std::string bytes(GetMetaFileBitsEx(metafile, 0, nullptr), '\0');
    GetMetaFileBitsEx(metafile, static_cast<UINT>(bytes.size()), bytes.data());
    DeleteMetaFile(metafile);
    const std::uint16_t header[] = {0xCDD7, 0x9AC6, 0, 0, 0, Width, Height, 96, 0, 0};
    std::uint16_t checksum = 0;
    for (const std::uint16_t word : header) {
        checksum ^= word;
    }
    return std::string(reinterpret_cast<const char*>(header), sizeof header) +
           std::string(reinterpret_cast<const char*>(&checksum), sizeof checksum) + bytes;
}

}  // namespace krv::tests
