// By GDI+, which comes with Windows.
#include "suite/picture/CompressedPictures.h"

#include <windows.h>
// After windows.h, which they need.
#include <objidl.h>
// After objidl.h, which it needs.
#include <gdiplus.h>
#include <wrl/client.h>

#include <algorithm>
#include <memory>

#include "common/Error.h"

namespace krv::suite::picture {
namespace {

using Microsoft::WRL::ComPtr;

constexpr ULONG JpegQuality = 95;
constexpr double PixelsPerInch = 96;

// The encoders' well-known names.
constexpr CLSID GifEncoder{
    0x557CF402, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr CLSID JpegEncoder{
    0x557CF401, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr CLSID TiffEncoder{
    0x557CF405, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr GUID QualityParameter{
    0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
constexpr GUID CompressionParameter{
    0xE09D739D, 0xCCD4, 0x44EE, {0x8E, 0xBA, 0x3F, 0xBF, 0x8B, 0xE4, 0xFC, 0x58}};

class GdiPlus {
 public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        Require(Gdiplus::GdiplusStartup(&m_token, &input, nullptr));
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(m_token); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

    static void Require(Gdiplus::Status status) {
        if (status != Gdiplus::Ok) {
            throw Error(ErrorNumber::InternalError, "The picture file could not be made.");
        }
    }

 private:
    ULONG_PTR m_token = 0;
};

void FillRows(Gdiplus::Bitmap& bitmap, const Picture& picture, Gdiplus::PixelFormat format,
              const auto& fillRow) {
    const Gdiplus::Rect whole(0, 0, picture.width, picture.height);
    Gdiplus::BitmapData data;
    GdiPlus::Require(bitmap.LockBits(&whole, Gdiplus::ImageLockModeWrite, format, &data));
    for (int y = 0; y < picture.height; ++y) {
        fillRow(static_cast<BYTE*>(data.Scan0) + std::ptrdiff_t{y} * data.Stride, y);
    }
    GdiPlus::Require(bitmap.UnlockBits(&data));
}

void FillWithColors(Gdiplus::Bitmap& bitmap, const Picture& picture) {
    FillRows(bitmap, picture, PixelFormat24bppRGB, [&](BYTE* target, int y) {
        for (int x = 0; x < picture.width; ++x) {
            const Color& color = picture.Row(y)[x];
            *target++ = color.blue;
            *target++ = color.green;
            *target++ = color.red;
        }
    });
}

void FillWithIndices(Gdiplus::Bitmap& bitmap, const Picture& picture) {
    const IndexedPicture indexed = ToIndexed(picture);
    // The structure ends in an array of one entry.
    const std::size_t size =
        sizeof(Gdiplus::ColorPalette) + indexed.colors.size() * sizeof(Gdiplus::ARGB);
    const auto storage = std::make_unique<BYTE[]>(size);
    auto* const palette = reinterpret_cast<Gdiplus::ColorPalette*>(storage.get());
    palette->Count = static_cast<UINT>(indexed.colors.size());
    for (std::size_t index = 0; index < indexed.colors.size(); ++index) {
        const Color& color = indexed.colors[index];
        palette->Entries[index] = Gdiplus::Color::MakeARGB(255, color.red, color.green, color.blue);
    }
    GdiPlus::Require(bitmap.SetPalette(palette));
    FillRows(bitmap, picture, PixelFormat8bppIndexed, [&](BYTE* target, int y) {
        const auto width = static_cast<std::size_t>(picture.width);
        std::copy_n(indexed.indices.data() + static_cast<std::size_t>(y) * width, width, target);
    });
}

std::string BytesOf(IStream& stream) {
    STATSTG state{};
    if (FAILED(stream.Stat(&state, STATFLAG_NONAME)) ||
        FAILED(stream.Seek({}, STREAM_SEEK_SET, nullptr))) {
        GdiPlus::Require(Gdiplus::Win32Error);
    }
    std::string bytes(static_cast<std::size_t>(state.cbSize.QuadPart), '\0');
    ULONG count = 0;
    stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &count);
    bytes.resize(count);
    return bytes;
}

std::string Save(Gdiplus::Bitmap& bitmap, const CLSID& encoder,
                 const Gdiplus::EncoderParameters* parameters) {
    ComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &stream))) {
        throw Error(ErrorNumber::OutOfMemory);
    }
    GdiPlus::Require(bitmap.SetResolution(PixelsPerInch, PixelsPerInch));
    GdiPlus::Require(bitmap.Save(stream.Get(), &encoder, parameters));
    return BytesOf(*stream.Get());
}

std::string SaveWith(Gdiplus::Bitmap& bitmap, const CLSID& encoder, const GUID& name, ULONG value) {
    Gdiplus::EncoderParameters parameters{};
    parameters.Count = 1;
    parameters.Parameter[0].Guid = name;
    parameters.Parameter[0].NumberOfValues = 1;
    parameters.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
    parameters.Parameter[0].Value = &value;
    return Save(bitmap, encoder, &parameters);
}

}  // namespace

std::string EncodeGif(const Picture& picture) {
    const GdiPlus started;
    Gdiplus::Bitmap bitmap(picture.width, picture.height, PixelFormat8bppIndexed);
    FillWithIndices(bitmap, picture);
    return Save(bitmap, GifEncoder, nullptr);
}

std::string EncodeJpeg(const Picture& picture) {
    const GdiPlus started;
    Gdiplus::Bitmap bitmap(picture.width, picture.height, PixelFormat24bppRGB);
    FillWithColors(bitmap, picture);
    return SaveWith(bitmap, JpegEncoder, QualityParameter, JpegQuality);
}

std::string EncodeTiff(const Picture& picture) {
    const GdiPlus started;
    Gdiplus::Bitmap bitmap(picture.width, picture.height, PixelFormat24bppRGB);
    FillWithColors(bitmap, picture);
    return SaveWith(bitmap, TiffEncoder, CompressionParameter, Gdiplus::EncoderValueCompressionLZW);
}

}  // namespace krv::suite::picture
