#include "bench/shared/PictureCoding.h"

#include <cmath>
#include <cstring>

#include "common/Error.h"
#include "common/MemoryPropertyBag.h"

namespace krv::bench {
namespace {

constexpr std::int32_t MostPictures = 10000;
constexpr const char* CountKey = "count";

// The names of one picture's entries.
struct Keys {
    explicit Keys(std::int32_t number) : suffix(std::to_string(number)) {}
    std::string suffix;
    [[nodiscard]] std::string Of(const char* field) const { return field + suffix; }
};

ByteArray ToByteArray(std::string_view bytes) {
    ByteArray array;
    array.bytes.resize(bytes.size());
    std::memcpy(array.bytes.data(), bytes.data(), bytes.size());
    return array;
}

template <class Kind>
std::optional<Kind> ReadOptional(MemoryPropertyBag& bag, const std::string& name) {
    const std::optional<Value> value = bag.Find(name);
    if (!value) {
        return std::nullopt;
    }
    if (const Kind* kind = std::get_if<Kind>(&*value)) {
        return *kind;
    }
    throw Error(ErrorNumber::InvalidFileFormat,
                "The entry \"" + name + "\" of the document's pictures is of a wrong kind.");
}

template <class Kind>
Kind Read(MemoryPropertyBag& bag, const std::string& name) {
    if (auto value = ReadOptional<Kind>(bag, name)) {
        return *std::move(value);
    }
    throw Error(ErrorNumber::InvalidFileFormat,
                "The document's pictures have no entry \"" + name + "\".");
}

void WritePicture(PropertyBag& bag, const DocumentPicture& picture, const Keys& keys) {
    bag.Write(keys.Of("name"), picture.name);
    bag.Write(keys.Of("bytes"), ToByteArray(picture.bytes));
    bag.Write(keys.Of("width"), picture.size.width);
    bag.Write(keys.Of("height"), picture.size.height);
    if (picture.left) {
        bag.Write(keys.Of("left"), *picture.left);
    }
    if (picture.top) {
        bag.Write(keys.Of("top"), *picture.top);
    }
}

DocumentPicture ReadPicture(MemoryPropertyBag& bag, const Keys& keys, const PictureLimits& limits) {
    DocumentPicture picture;
    picture.name = Read<std::string>(bag, keys.Of("name"));
    const auto bytes = Read<ByteArray>(bag, keys.Of("bytes")).bytes;
    picture.bytes.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    picture.size = {Read<double>(bag, keys.Of("width")), Read<double>(bag, keys.Of("height"))};
    picture.left = ReadOptional<double>(bag, keys.Of("left"));
    picture.top = ReadOptional<double>(bag, keys.Of("top"));
    if (!Fits(picture, limits)) {
        throw Error(ErrorNumber::InvalidFileFormat,
                    "A picture of the document lies outside of anything.");
    }
    return picture;
}

bool IsLength(double points, double longest) {
    return points > 0 && points <= longest;
}

bool IsPlace(const std::optional<double>& points, double farthest) {
    return !points || std::abs(*points) <= farthest;
}

}  // namespace

std::string EncodePictures(const std::vector<DocumentPicture>& pictures) {
    MemoryPropertyBag bag;
    bag.Write(CountKey, static_cast<std::int32_t>(pictures.size()));
    std::int32_t number = 0;
    for (const DocumentPicture& picture : pictures) {
        WritePicture(bag, picture, Keys(++number));
    }
    const std::vector<std::byte> contents = bag.Contents();
    return {reinterpret_cast<const char*>(contents.data()), contents.size()};
}

std::vector<DocumentPicture> DecodePictures(std::string_view bytes, const PictureLimits& limits) {
    MemoryPropertyBag bag;
    bag.SetContents(std::as_bytes(std::span(bytes)));
    const auto count = Read<std::int32_t>(bag, CountKey);
    if (count < 0 || count > MostPictures) {
        throw Error(ErrorNumber::InvalidFileFormat, "The document's pictures are too many.");
    }
    std::vector<DocumentPicture> pictures;
    for (std::int32_t number = 1; number <= count; ++number) {
        pictures.push_back(ReadPicture(bag, Keys(number), limits));
    }
    return pictures;
}

bool Fits(const DocumentPicture& picture, const PictureLimits& limits) {
    return IsLength(picture.size.width, limits.longestSide) &&
           IsLength(picture.size.height, limits.longestSide) &&
           IsPlace(picture.left, limits.farthest) && IsPlace(picture.top, limits.farthest);
}

}  // namespace krv::bench
