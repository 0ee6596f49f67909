// Pictures as files for tests: metafiles recorded on the spot.
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace krv::tests {

inline constexpr COLORREF PictureRed = RGB(255, 0, 0);
inline constexpr COLORREF PictureBlue = RGB(0, 0, 255);

inline void FillHalves(HDC context, int width, int height) {
    const HBRUSH red = CreateSolidBrush(PictureRed);
    const HBRUSH blue = CreateSolidBrush(PictureBlue);
    const RECT left{0, 0, width / 2, height};
    const RECT right{width / 2, 0, width, height};
    FillRect(context, &left, red);
    FillRect(context, &right, blue);
    DeleteObject(red);
    DeleteObject(blue);
}

// A placeable metafile of 640 by 320 units, 96 an inch: its left half is red, its right half blue.
inline std::string PlaceableMetafile() {
    constexpr std::int16_t Width = 640;
    constexpr std::int16_t Height = 320;
    const HDC context = CreateMetaFileW(nullptr);
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowOrgEx(context, 0, 0, nullptr);
    SetWindowExtEx(context, Width, Height, nullptr);
    FillHalves(context, Width, Height);
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

// A bitmap file of 96 by 48 pixels in the same halves.
inline std::string BitmapFile() {
    constexpr int Width = 96;
    constexpr int Height = 48;
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = file.bfOffBits + Width * Height * 4;
    info.biSize = sizeof info;
    info.biWidth = Width;
    info.biHeight = Height;
    info.biPlanes = 1;
    info.biBitCount = 32;
    std::string bytes(file.bfSize, '\0');
    std::memcpy(bytes.data(), &file, sizeof file);
    std::memcpy(bytes.data() + sizeof file, &info, sizeof info);
    for (int pixel = 0; pixel < Width * Height; ++pixel) {
        // Blue, green, red.
        const bool isLeft = pixel % Width < Width / 2;
        bytes[file.bfOffBits + static_cast<std::size_t>(pixel) * 4 + (isLeft ? 2 : 0)] = '\xFF';
    }
    return bytes;
}

}  // namespace krv::tests
