#include "bench/shared/OfficeDocument.h"

#include <algorithm>
#include <utility>

#include "bench/shared/DocumentFile.h"
#include "bench/shared/FileBytes.h"
#include "bench/shared/PictureCoding.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr const char* PicturesSection = "pictures";

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

// Without its content a document is worth nothing; a control can be connected again by hand.
void OfficeDocument::TakeContainer(const std::string& bytes) {
    const DocumentFile file(bytes);
    file.RequireKind(m_traits.kindOfFile);
    TakeContent(file.Section(m_traits.contentSection).value_or(""));
    if (const auto pictures = file.Section(PicturesSection)) {
        m_pictures = DecodePictures(*pictures, m_traits.pictureLimits);
    }
    try {
        m_control = file.Section(SectionName::Control);
    } catch (const Error& error) {
        m_notice = "The toolbar's settings in \"" + m_name +
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
    if (m_control) {
        sections.push_back({SectionName::Control, *m_control});
    }
    return EncodeDocument(sections);
}

bool OfficeDocument::IsPlain(const std::string& path) const {
    return m_traits.hasSheets && !HasEnding(path, m_traits.fileEnding);
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
