#include "suite/picture/PictureFile.h"

#include <algorithm>
#include <array>
#include <span>

#include "common/Error.h"
#include "common/WholeFile.h"
#include "suite/picture/BitmapFile.h"
#include "suite/picture/CompressedPictures.h"
#include "suite/picture/Metafiles.h"

namespace krv::suite::picture {
namespace {

struct KnownExtension {
    std::string_view extension;
    PictureFormat format;
};

constexpr std::array<KnownExtension, 8> Extensions{{{"gif", PictureFormat::Gif},
                                                    {"bmp", PictureFormat::Bitmap},
                                                    {"wmf", PictureFormat::PlaceableMetafile},
                                                    {"jpg", PictureFormat::Jpeg},
                                                    {"jpeg", PictureFormat::Jpeg},
                                                    {"tif", PictureFormat::Tiff},
                                                    {"tiff", PictureFormat::Tiff},
                                                    {"emf", PictureFormat::EnhancedMetafile}}};

std::string LowerExtension(std::string_view file) {
    const std::string_view name = file.substr(file.find_last_of("/\\") + 1);
    const auto dot = name.rfind('.');
    std::string extension(dot == std::string_view::npos ? "" : name.substr(dot + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return extension;
}

}  // namespace

PictureFormat FormatOfFile(std::string_view file) {
    const std::string extension = LowerExtension(file);
    for (const KnownExtension& known : Extensions) {
        if (extension == known.extension) {
            return known.format;
        }
    }
    std::string list;
    for (const KnownExtension& known : Extensions) {
        const bool isLast = &known == &Extensions.back();
        list += (list.empty() ? "." : isLast ? " or ." : ", .") + std::string(known.extension);
    }
    throw Error(ErrorNumber::InvalidFileFormat,
                "The picture \"" + std::string(file) +
                    "\" cannot be written: its name must end with " + list + '.');
}

std::string EncodePicture(const Picture& picture, PictureFormat format) {
    switch (format) {
        case PictureFormat::Gif:
            return EncodeGif(picture);
        case PictureFormat::Bitmap:
            return EncodeBitmapFile(picture);
        case PictureFormat::PlaceableMetafile:
            return EncodePlaceableMetafile(picture);
        case PictureFormat::Jpeg:
            return EncodeJpeg(picture);
        case PictureFormat::Tiff:
            return EncodeTiff(picture);
        case PictureFormat::EnhancedMetafile:
            return EncodeEnhancedMetafile(picture);
    }
    return {};
}

void WriteWhole(const std::string& file, std::string_view bytes) {
    if (const auto failure = WriteWholeFile(PathOf(file), std::as_bytes(std::span(bytes)))) {
        throw Error(ErrorNumber::PathFileAccess,
                    "The file \"" + file + "\" cannot be written: " + failure.message());
    }
}

}  // namespace krv::suite::picture
