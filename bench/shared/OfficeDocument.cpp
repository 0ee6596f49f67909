#include "bench/shared/OfficeDocument.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "bench/shared/DocumentFile.h"
#include "bench/shared/FileBytes.h"
#include "bench/shared/PictureCoding.h"
#include "bench/shared/XmlText.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr const char* PicturesSection = "pictures";

// Each text behind its length, 8 bytes with the low one first.
std::string EncodeParts(const std::vector<OfficeDocument::XmlPart>& parts) {
    std::string bytes;
    for (const auto& part : parts) {
        for (std::size_t shift = 0; shift < 64; shift += 8) {
            bytes += static_cast<char>(std::uint64_t{part->size()} >> shift & 0xFF);
        }
        bytes += *part;
    }
    return bytes;
}

// Throws Error 321 for what can't have been written.
std::vector<OfficeDocument::XmlPart> DecodeParts(std::string_view bytes) {
    std::vector<OfficeDocument::XmlPart> parts;
    while (!bytes.empty()) {
        std::uint64_t length = 0;
        for (std::size_t index = std::min<std::size_t>(8, bytes.size()); index-- > 0;) {
            length = length << 8 | static_cast<unsigned char>(bytes[index]);
        }
        if (bytes.size() < 8 || length > bytes.size() - 8) {
            throw Error(ErrorNumber::InvalidFileFormat,
                        "The file is damaged: its XML parts have no end.");
        }
        const std::string_view xml = bytes.substr(8, static_cast<std::size_t>(length));
        (void)ParseXml(xml);
        parts.push_back(std::make_shared<const std::string>(xml));
        bytes.remove_prefix(8 + xml.size());
    }
    return parts;
}

bool HasEnding(std::string_view path, std::string_view ending) {
    return path.size() > ending.size() &&
           EqualIgnoringCase(path.substr(path.size() - ending.size()), ending);
}

}  // namespace

void OfficeDocument::Load(const std::string& path) {
    const std::string bytes = ReadFileBytes(path);
    m_name = FileNameOf(path);
    try {
        if (IsPlain(path) && !DocumentFile::IsOne(bytes)) {
            TakeContent(bytes);
        } else {
            TakeContainer(bytes);
        }
    } catch (const Error& error) {
        throw Error(error.Number(), "\"" + path + "\": " + error.Description());
    }
    m_path = path;
}

// Without its content a document is worth nothing; an instrument can be connected again by hand.
void OfficeDocument::TakeContainer(const std::string& bytes) {
    const DocumentFile file(bytes);
    file.RequireKind(m_traits.kindOfFile);
    TakeContent(file.Section(m_traits.contentSection).value_or(""));
    if (const auto pictures = file.Section(PicturesSection)) {
        m_pictures = DecodePictures(*pictures, m_traits.pictureLimits);
    }
    try {
        m_parts = DecodeParts(file.Section(SectionName::Parts).value_or(""));
    } catch (const Error& error) {
        m_notice = "What add-ins keep in \"" + m_name +
                   "\" can't be used, and no instrument is connected.  " + error.Description();
    }
}

void OfficeDocument::SaveAs(const std::string& path) {
    WriteFileBytes(path, IsPlain(path) ? Content() : Container());
    m_path = path;
    m_name = FileNameOf(path);
    m_isModified = false;
    m_notice.clear();
    Notify(OfficeChange::File);
}

std::string OfficeDocument::Container() const {
    std::vector<DocumentSection> sections{{SectionName::Kind, m_traits.kindOfFile},
                                          {m_traits.contentSection, Content()}};
    if (!m_pictures.empty()) {
        sections.push_back({PicturesSection, EncodePictures(m_pictures)});
    }
    if (!m_parts.empty()) {
        sections.push_back({SectionName::Parts, EncodeParts(m_parts)});
    }
    return EncodeDocument(sections);
}

bool OfficeDocument::IsPlain(const std::string& path) const {
    return m_traits.hasSheets && !HasEnding(path, m_traits.fileEnding);
}

OfficeDocument::XmlPart OfficeDocument::AddXmlPart(std::string xml) {
    (void)ParseXml(xml);
    m_parts.push_back(std::make_shared<const std::string>(std::move(xml)));
    NotePartChange();
    return m_parts.back();
}

void OfficeDocument::RemoveXmlPart(const XmlPart& part) {
    if (std::erase(m_parts, part) != 0) {
        NotePartChange();
    }
}

// A file without room for them has nothing to be saved for.
void OfficeDocument::NotePartChange() {
    if (HasFile() && IsPlain(m_path)) {
        Notify(OfficeChange::Parts);
    } else {
        Modify(OfficeChange::Parts);
    }
}

std::size_t OfficeDocument::AddPicture(DocumentPicture picture) {
    picture.name = "Picture " + std::to_string(m_pictures.size() + 1);
    if (!Fits(picture, m_traits.pictureLimits)) {
        throw m_traits.pictureOutOfPlace();
    }
    m_pictures.push_back(std::move(picture));
    Modify(OfficeChange::Pictures);
    return m_pictures.size() - 1;
}

void OfficeDocument::ChangePictureSize(std::size_t index, PictureSize size) {
    DocumentPicture changed = m_pictures.at(index);
    changed.size = size;
    if (!Fits(changed, m_traits.pictureLimits)) {
        throw m_traits.pictureOutOfPlace();
    }
    m_pictures[index] = std::move(changed);
    Modify(OfficeChange::Pictures);
}

void OfficeDocument::Modify(OfficeChange change) {
    m_isModified = true;
    Notify(change);
}

}  // namespace krv::bench
