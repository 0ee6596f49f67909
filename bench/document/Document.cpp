#include "bench/document/Document.h"

#include <algorithm>
#include <array>
#include <utility>

#include "bench/document/DocumentErrors.h"
#include "bench/shared/DocumentFile.h"
#include "bench/shared/FileBytes.h"
#include "bench/shared/PictureCoding.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr const char* KindOfDocument = "document";
constexpr const char* TextSection = "text";
constexpr const char* PicturesSection = "pictures";
// What a page may hold: 22 inches.
constexpr PictureLimits PageLimits{22 * 72, 22 * 72};

std::string FileNameOf(const std::string& path) {
    return path.substr(path.find_last_of("\\/") + 1);
}

// A linked picture's file, or nothing when it can't be had now.
std::string LinkedBytes(const std::string& file) {
    try {
        return ReadFileBytes(file);
    } catch (const Error&) {
        return {};
    }
}

// The natural size, or the one that is asked for; of one length alone follows the other.
PictureSize SizeOf(const PictureToAdd& asked, PictureSize natural) {
    PictureSize size{asked.width.value_or(natural.width), asked.height.value_or(natural.height)};
    if (asked.width && !asked.height && natural.width > 0) {
        size.height = natural.height * *asked.width / natural.width;
    } else if (asked.height && !asked.width && natural.height > 0) {
        size.width = natural.width * *asked.height / natural.height;
    }
    return size;
}

}  // namespace

Document::Document(std::string name, PictureMeter& meter, Listener listener)
    : m_name(std::move(name)), m_meter(meter), m_listener(std::move(listener)) {}

std::shared_ptr<Document> Document::Load(const std::string& path, PictureMeter& meter,
                                         Listener listener) {
    const std::string bytes = ReadFileBytes(path);
    auto document = std::make_shared<Document>(FileNameOf(path), meter, std::move(listener));
    try {
        document->Decode(bytes);
    } catch (const Error& error) {
        throw Error(error.Number(),
                    "The file \"" + path + "\" can't be opened.  " + error.Description());
    }
    document->m_path = path;
    return document;
}

void Document::Decode(const std::string& bytes) {
    if (!DocumentFile::IsOne(bytes)) {
        throw Error(ErrorNumber::InvalidFileFormat, "It is no document.");
    }
    const DocumentFile file(bytes);
    file.RequireKind(KindOfDocument);
    m_text = file.Section(TextSection).value_or("");
    if (const auto pictures = file.Section(PicturesSection)) {
        m_pictures = DecodePictures(*pictures, PageLimits);
    }
    for (DocumentPicture& picture : m_pictures) {
        if (!picture.isSavedWithDocument) {
            picture.bytes = LinkedBytes(picture.link);
        }
    }
    try {
        if (const auto control = file.Section(SectionName::Control)) {
            m_control = *control;
        }
    } catch (const Error& error) {
        m_problem = "The toolbar control's properties are damaged.  " + error.Description();
    }
}

void Document::SaveAs(const std::string& path) {
    WriteFileBytes(path, Encode());
    m_path = path;
    m_name = FileNameOf(path);
    m_isModified = false;
    m_listener(DocumentPart::File);
}

std::string Document::Encode() const {
    std::vector<DocumentSection> sections{{SectionName::Kind, KindOfDocument},
                                          {TextSection, m_text},
                                          {PicturesSection, EncodePictures(m_pictures)}};
    if (m_control) {
        sections.push_back({SectionName::Control, *m_control});
    }
    return EncodeDocument(sections);
}

void Document::SetText(const std::string& text) {
    if (m_text != text) {
        m_text = text;
        Changed(DocumentPart::Text);
    }
}

std::size_t Document::AddPicture(const PictureToAdd& picture) {
    if (!picture.isLinked && !picture.isSavedWithDocument) {
        throw ValueOutOfRange();
    }
    DocumentPicture added;
    added.bytes = ReadFileBytes(picture.file);
    added.size = SizeOf(picture, m_meter.NaturalSize(added.bytes));
    added.name = FreePictureName();
    added.link = picture.isLinked ? picture.file : std::string();
    added.isSavedWithDocument = picture.isSavedWithDocument;
    added.left = picture.left;
    added.top = picture.top;
    if (!Fits(added, PageLimits)) {
        throw ValueOutOfRange();
    }
    m_pictures.push_back(std::move(added));
    Changed(DocumentPart::Pictures);
    return m_pictures.size() - 1;
}

void Document::ChangePicture(std::size_t index,
                             const std::function<void(DocumentPicture&)>& change) {
    if (index >= m_pictures.size()) {
        throw NoSuchMember();
    }
    DocumentPicture changed = m_pictures[index];
    change(changed);
    if (!Fits(changed, PageLimits)) {
        throw ValueOutOfRange();
    }
    m_pictures[index] = std::move(changed);
    Changed(DocumentPart::Pictures);
}

void Document::RemovePicture(std::size_t index) {
    if (index >= m_pictures.size()) {
        throw NoSuchMember();
    }
    m_pictures.erase(m_pictures.begin() + static_cast<std::ptrdiff_t>(index));
    Changed(DocumentPart::Pictures);
}

std::size_t Document::PictureByName(const std::string& name) const {
    for (std::size_t index = 0; index < m_pictures.size(); ++index) {
        if (EqualIgnoringCase(m_pictures[index].name, name)) {
            return index;
        }
    }
    throw NoSuchMember();
}

std::string Document::FreePictureName() const {
    std::size_t number = m_pictures.size() + 1;
    const auto isTaken = [&] {
        return std::any_of(m_pictures.begin(), m_pictures.end(), [&](const auto& picture) {
            return EqualIgnoringCase(picture.name, "Picture " + std::to_string(number));
        });
    };
    while (isTaken()) {
        ++number;
    }
    return "Picture " + std::to_string(number);
}

void Document::SetControlProperties(std::optional<std::string> contents) {
    m_control = std::move(contents);
}

void Document::Changed(DocumentPart part) {
    m_isModified = true;
    m_listener(part);
}

}  // namespace krv::bench
