// What the encoders write, loaded and drawn by the system.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which they need.
#include <objidl.h>
// After objidl.h, which it needs.
#include <ocidl.h>
#include <olectl.h>
#include <wrl/client.h>

#include <cstdlib>
#include <cstring>

#include "suite/picture/PictureFile.h"
#include "tests/support/SamplePictures.h"
#include "tests/windows/support/Canvas.h"

namespace krv::tests {
namespace {

using namespace suite::picture;

using Microsoft::WRL::ComPtr;

ComPtr<IStream> StreamOf(const std::string& bytes) {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
    std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
    GlobalUnlock(memory);
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(memory, TRUE, &stream);
    return stream;
}

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
            const COLORREF found = canvas.At(x, y);
            greatest = std::max({greatest, std::abs(wanted.red - GetRValue(found)),
                                 std::abs(wanted.green - GetGValue(found)),
                                 std::abs(wanted.blue - GetBValue(found))});
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

}  // namespace
}  // namespace krv::tests
