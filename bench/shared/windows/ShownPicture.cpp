#include "bench/shared/windows/ShownPicture.h"

#include <ole2.h>
#include <olectl.h>

#include <cmath>
#include <cstdint>
#include <cstring>

#include "common/Error.h"
#include "windows/base/Himetric.h"

namespace krv::bench {
namespace {

constexpr std::int32_t InvalidPicture = 481;
constexpr double PointsPerInch = 72;

// The header in front of a metafile that has its size.
#pragma pack(push, 2)
struct PlaceableHeader {
    std::uint32_t key;
    std::uint16_t handle;
    std::int16_t left;
    std::int16_t top;
    std::int16_t right;
    std::int16_t bottom;
    std::uint16_t unitsPerInch;
    std::uint32_t reserved;
    std::uint16_t checksum;
};
#pragma pack(pop)
static_assert(sizeof(PlaceableHeader) == 22);
constexpr std::uint32_t PlaceableKey = 0x9AC6CDD7;

double PointsOf(double himetric) {
    return himetric * PointsPerInch / windows::HimetricPerInch;
}

UINT SizeOf(const std::string& bytes, std::size_t from = 0) {
    return static_cast<UINT>(bytes.size() - from);
}

Microsoft::WRL::ComPtr<IStream> StreamOf(const std::string& bytes) {
    Microsoft::WRL::ComPtr<IStream> stream;
    if (SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &stream))) {
        stream->Write(bytes.data(), SizeOf(bytes), nullptr);
        stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
    }
    return stream;
}

}  // namespace

ShownPicture::ShownPicture(const std::string& bytes) {
    if (!LoadPlaceable(bytes) && !LoadBitmap(bytes)) {
        throw Error(InvalidPicture, "Invalid picture");
    }
}

ShownPicture::~ShownPicture() {
    if (m_metafile != nullptr) {
        DeleteEnhMetaFile(m_metafile);
    }
}

bool ShownPicture::LoadPlaceable(const std::string& bytes) {
    PlaceableHeader header{};
    if (bytes.size() <= sizeof header) {
        return false;
    }
    std::memcpy(&header, bytes.data(), sizeof header);
    const int width = header.right - header.left;
    const int height = header.bottom - header.top;
    if (header.key != PlaceableKey || header.unitsPerInch == 0 || width <= 0 || height <= 0) {
        return false;
    }
    const auto himetric = [&](int units) {
        return static_cast<LONG>(
            std::lround(units * windows::HimetricPerInch / header.unitsPerInch));
    };
    METAFILEPICT shape{MM_ANISOTROPIC, himetric(width), himetric(height), nullptr};
    m_metafile = SetWinMetaFileBits(SizeOf(bytes, sizeof header),
                                    reinterpret_cast<const BYTE*>(bytes.data()) + sizeof header,
                                    nullptr, &shape);
    m_width = width * PointsPerInch / header.unitsPerInch;
    m_height = height * PointsPerInch / header.unitsPerInch;
    return m_metafile != nullptr;
}

bool ShownPicture::LoadBitmap(const std::string& bytes) {
    const auto stream = StreamOf(bytes);
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    if (bytes.empty() || !stream ||
        FAILED(OleLoadPicture(stream.Get(), static_cast<LONG>(SizeOf(bytes)), FALSE, IID_IPicture,
                              reinterpret_cast<void**>(m_bitmap.GetAddressOf()))) ||
        FAILED(m_bitmap->get_Width(&width)) || FAILED(m_bitmap->get_Height(&height))) {
        return false;
    }
    m_width = PointsOf(width);
    m_height = PointsOf(height);
    return width > 0 && height > 0;
}

void ShownPicture::Draw(HDC context, const RECT& place) const {
    const int before = SaveDC(context);
    IntersectClipRect(context, place.left, place.top, place.right, place.bottom);
    if (m_metafile != nullptr) {
        PlayEnhMetaFile(context, m_metafile, &place);
    } else {
        OLE_XSIZE_HIMETRIC width = 0;
        OLE_YSIZE_HIMETRIC height = 0;
        m_bitmap->get_Width(&width);
        m_bitmap->get_Height(&height);
        SetStretchBltMode(context, HALFTONE);
        // Pictures count from their bottom.
        m_bitmap->Render(context, place.left, place.top, place.right - place.left,
                         place.bottom - place.top, 0, height, width, -height, nullptr);
    }
    RestoreDC(context, before);
}

}  // namespace krv::bench
