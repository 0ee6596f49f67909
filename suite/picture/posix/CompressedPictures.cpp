// By libgif, libturbojpeg and libtiff.
#include "suite/picture/CompressedPictures.h"

#include <gif_lib.h>
#include <tiffio.h>
#include <turbojpeg.h>
#include <tiffio.hxx>

#include <bit>
#include <memory>
#include <sstream>

#include "common/Error.h"

namespace krv::suite::picture {
namespace {

[[noreturn]] void Fail(const std::string& kind) {
    throw Error(ErrorNumber::InternalError, "The " + kind + " file could not be made.");
}

const unsigned char* BytesOf(const Picture& picture) {
    static_assert(sizeof(Color) == 3);
    return &picture.pixels.front().red;
}

// --- GIF -----------------------------------------------------------------------------------------

int AppendGif(GifFileType* gif, const GifByteType* bytes, int count) {
    static_cast<std::string*>(gif->UserData)
        ->append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    return count;
}

struct GifCloser {
    void operator()(GifFileType* gif) const { EGifCloseFile(gif, nullptr); }
};

struct ColorMapFreer {
    void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};

std::unique_ptr<ColorMapObject, ColorMapFreer> MakeColorMap(const std::vector<Color>& colors) {
    // A power of two, at least 2.
    const auto size = std::max<std::size_t>(2, std::bit_ceil(colors.size()));
    std::unique_ptr<ColorMapObject, ColorMapFreer> map(
        GifMakeMapObject(static_cast<int>(size), nullptr));
    for (std::size_t index = 0; map && index < colors.size(); ++index) {
        map->Colors[index] = {colors[index].red, colors[index].green, colors[index].blue};
    }
    return map;
}

bool PutGif(GifFileType* gif, const Picture& picture, IndexedPicture& indexed) {
    const auto map = MakeColorMap(indexed.colors);
    if (!map || EGifPutScreenDesc(gif, picture.width, picture.height, 8, 0, map.get()) != GIF_OK ||
        EGifPutImageDesc(gif, 0, 0, picture.width, picture.height, false, nullptr) != GIF_OK) {
        return false;
    }
    for (int y = 0; y < picture.height; ++y) {
        const auto start = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
        if (EGifPutLine(gif, indexed.indices.data() + start, picture.width) != GIF_OK) {
            return false;
        }
    }
    return true;
}

// --- JPEG ----------------------------------------------------------------------------------------

struct JpegDestroyer {
    void operator()(void* jpeg) const { tjDestroy(jpeg); }
};

struct JpegFreer {
    void operator()(unsigned char* bytes) const { tjFree(bytes); }
};

constexpr int JpegQuality = 95;

}  // namespace

std::string EncodeGif(const Picture& picture) {
    IndexedPicture indexed = ToIndexed(picture);
    std::string file;
    std::unique_ptr<GifFileType, GifCloser> gif(EGifOpen(&file, AppendGif, nullptr));
    if (!gif || !PutGif(gif.get(), picture, indexed) ||
        EGifCloseFile(gif.release(), nullptr) != GIF_OK) {
        Fail("GIF");
    }
    return file;
}

std::string EncodeJpeg(const Picture& picture) {
    const std::unique_ptr<void, JpegDestroyer> jpeg(tjInitCompress());
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    const int failure = tjCompress2(jpeg.get(), BytesOf(picture), picture.width, 0, picture.height,
                                    TJPF_RGB, &bytes, &size, TJSAMP_444, JpegQuality, 0);
    const std::unique_ptr<unsigned char, JpegFreer> owned(bytes);
    if (failure != 0) {
        Fail("JPEG");
    }
    return {reinterpret_cast<const char*>(bytes), size};
}

std::string EncodeTiff(const Picture& picture) {
    std::ostringstream stream;
    TIFF* const tiff = TIFFStreamOpen("picture", &stream);
    if (tiff == nullptr) {
        Fail("TIFF");
    }
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(tiff, TIFFTAG_XRESOLUTION, 96.0);
    TIFFSetField(tiff, TIFFTAG_YRESOLUTION, 96.0);
    std::vector<Color> row(static_cast<std::size_t>(picture.width));
    bool written = true;
    for (int y = 0; y < picture.height && written; ++y) {
        row.assign(picture.Row(y), picture.Row(y) + picture.width);
        written = TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y)) == 1;
    }
    TIFFClose(tiff);
    if (!written || !stream) {
        Fail("TIFF");
    }
    return std::move(stream).str();
}

}  // namespace krv::suite::picture
