// What the encoders write, loaded and drawn by the system.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which they need.
#include <objidl.h>
// After objidl.h, which it needs.
#include <gdiplus.h>
#include <ocidl.h>
#include <olectl.h>
#include <wrl/client.h>

#include <cstdlib>
#include <cstring>

#include "suite/picture/PictureFile.h"
#include "tests/support/SamplePictures.h"

namespace krv::tests {

using namespace suite;
using namespace suite::picture;
namespace {

using Microsoft::WRL::ComPtr;

ComPtr<IStream> StreamOf(const std::string& bytes) {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
    GlobalUnlock(memory);
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(memory, TRUE, &stream);
    return stream;
}

// A black canvas of 32-bit pixels, which something is drawn on.
class Canvas {
 public:
    Canvas(int width, int height) : m_width(width), m_context(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        SelectObject(m_context, m_bitmap);
    }
    ~Canvas() {
        DeleteDC(m_context);
        DeleteObject(m_bitmap);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    [[nodiscard]] HDC Context() const { return m_context; }
    [[nodiscard]] Color At(int x, int y) const {
        GdiFlush();
        const auto* const pixel = static_cast<const std::uint8_t*>(m_bits) + (y * m_width + x) * 4;
        return {pixel[2], pixel[1], pixel[0]};
    }

 private:
    int m_width;
    HDC m_context;
    HBITMAP m_bitmap = nullptr;
    void* m_bits = nullptr;
};

// The size that the picture says it has, in hundredths of a millimetre; nothing when it can't be
// loaded.
SIZE DrawByOle(const std::string& file, const Canvas& canvas, const Picture& picture) {
    ComPtr<IPicture> loaded;
    const auto stream = StreamOf(file);
    if (FAILED(OleLoadPicture(stream.Get(), static_cast<LONG>(file.size()), FALSE, IID_IPicture,
                              reinterpret_cast<void**>(loaded.GetAddressOf())))) {
        return {};
    }
    SIZE size{};
    loaded->get_Width(&size.cx);
    loaded->get_Height(&size.cy);
    loaded->Render(canvas.Context(), 0, 0, picture.width, picture.height, 0, size.cy, size.cx,
                   -size.cy, nullptr);
    return size;
}

int Difference(const Canvas& canvas, const Picture& picture) {
    int greatest = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const Color wanted = picture.Row(y)[x];
            const Color found = canvas.At(x, y);
            greatest = std::max({greatest, std::abs(wanted.red - found.red),
                                 std::abs(wanted.green - found.green),
                                 std::abs(wanted.blue - found.blue)});
        }
    }
    return greatest;
}

TEST(PictureLoading, DrawsEveryPixelOfPicturesWithoutLoss) {
    for (const PictureFormat format :
         {PictureFormat::Gif, PictureFormat::Bitmap, PictureFormat::PlaceableMetafile}) {
        for (const int colors : {2, 16, 200}) {
            const Picture sample = SamplePicture(96, 48, colors);
            const Canvas canvas(sample.width, sample.height);
            const SIZE size = DrawByOle(EncodePicture(sample, format), canvas, sample);
            // An inch by half an inch.
            EXPECT_NEAR(size.cx, 2540, 1) << static_cast<int>(format);
            EXPECT_NEAR(size.cy, 1270, 1) << static_cast<int>(format);
            EXPECT_EQ(Difference(canvas, sample), 0) << static_cast<int>(format) << ' ' << colors;
        }
    }
}

TEST(PictureLoading, PlaysEnhancedMetafilesPixelForPixel) {
    const Picture sample = SamplePicture(96, 48, 30);
    const std::string file = EncodePicture(sample, PictureFormat::EnhancedMetafile);
    const HENHMETAFILE metafile = SetEnhMetaFileBits(static_cast<UINT>(file.size()),
                                                     reinterpret_cast<const BYTE*>(file.data()));
    ASSERT_NE(metafile, nullptr);
    ENHMETAHEADER header{};
    ASSERT_NE(GetEnhMetaFileHeader(metafile, sizeof header, &header), 0U);
    EXPECT_EQ(header.rclFrame.right, 2540);
    EXPECT_EQ(header.rclFrame.bottom, 1270);
    const Canvas canvas(sample.width, sample.height);
    const RECT whole{0, 0, sample.width, sample.height};
    EXPECT_TRUE(PlayEnhMetaFile(canvas.Context(), metafile, &whole));
    EXPECT_EQ(Difference(canvas, sample), 0);
    DeleteEnhMetaFile(metafile);
}

TEST(PictureLoading, DrawsAJpegsPixelsNearlyAsTheyWere) {
    const Picture sample = DisplayLikePicture();
    const Canvas canvas(sample.width, sample.height);
    EXPECT_NE(DrawByOle(EncodePicture(sample, PictureFormat::Jpeg), canvas, sample).cx, 0);
    EXPECT_LE(Difference(canvas, sample), 64);
}

TEST(PictureLoading, ReadsEveryPixelOfATiff) {
    const Gdiplus::GdiplusStartupInput input;
    ULONG_PTR token = 0;
    ASSERT_EQ(Gdiplus::GdiplusStartup(&token, &input, nullptr), Gdiplus::Ok);
    for (const int colors : {2, 200, 3000}) {
        const Picture sample = SamplePicture(97, 48, colors);
        const auto stream = StreamOf(EncodePicture(sample, PictureFormat::Tiff));
        Gdiplus::Bitmap loaded(stream.Get());
        ASSERT_EQ(loaded.GetWidth(), 97U);
        ASSERT_EQ(loaded.GetHeight(), 48U);
        int differing = 0;
        for (int y = 0; y < sample.height; ++y) {
            for (int x = 0; x < sample.width; ++x) {
                Gdiplus::Color found;
                loaded.GetPixel(x, y, &found);
                const Color wanted = sample.Row(y)[x];
                differing += wanted == Color{found.GetR(), found.GetG(), found.GetB()} ? 0 : 1;
            }
        }
        EXPECT_EQ(differing, 0) << colors;
    }
    Gdiplus::GdiplusShutdown(token);
}

}  // namespace
}  // namespace krv::tests
