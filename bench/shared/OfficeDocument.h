// OfficeDocument: one document of a bench application: its name and file, its pictures, and what
// add-ins keep in it. Owned by its application, shared with the objects that stand for
// parts of it; one thread's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/shared/DocumentPicture.h"
#include "bench/shared/OfficeTraits.h"

namespace krv::bench {

// What can change in an application, for those who show it.
enum class OfficeChange : std::uint8_t {
    // Which documents are open, or which is active.
    Documents,
    // A document has been saved, perhaps under another name.
    File,
    // Cells or text.
    Content,
    Pictures,
    Parts,
    Selection,
    StatusBar,
    Cursor,
    ScreenUpdating,
    CommandBars
};

class OfficeDocument {
 public:
    // Receives every change of the document; outlives it.
    using Listener = std::function<void(OfficeChange)>;

    OfficeDocument(const OfficeDocument&) = delete;
    OfficeDocument& operator=(const OfficeDocument&) = delete;
    virtual ~OfficeDocument() = default;

    // Reads the file, whose path is UTF-8, into this new document. Throws Error 53 when there is no
    // such file, 75 when it can't be read, 321 when it is damaged or of another kind; each
    // description names the file. Damage to the XML parts alone is told by Notice.
    void Load(const std::string& path);
    // Throws Error 75 when the file can't be written, and 380 when the document is too large; the
    // file on the disk is then as it was.
    void SaveAs(const std::string& path);

    // E.g. "wave.csv", or "Book1" without a file.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    // With its folder, where there is one.
    [[nodiscard]] const std::string& FullName() const { return m_path.empty() ? m_name : m_path; }
    [[nodiscard]] bool HasFile() const { return !m_path.empty(); }
    [[nodiscard]] bool IsModified() const { return m_isModified; }
    void SetModified(bool isModified) { m_isModified = isModified; }
    // What the user should know of the file as it was opened; empty for nothing.
    [[nodiscard]] const std::string& Notice() const { return m_notice; }

    // What add-ins keep here: XML texts. A file of cells alone has no room for them.
    using XmlPart = std::shared_ptr<const std::string>;
    [[nodiscard]] const std::vector<XmlPart>& XmlParts() const { return m_parts; }
    // Throws Error 321 for a text that is no XML.
    XmlPart AddXmlPart(std::string xml);
    void RemoveXmlPart(const XmlPart& part);

    // The lowest first. None is ever removed.
    [[nodiscard]] const std::vector<DocumentPicture>& Pictures() const { return m_pictures; }
    // Names the picture and returns its index. Each of these throws the application's error for a
    // size or a place that no picture can have, and leaves the document as it was.
    std::size_t AddPicture(DocumentPicture picture);
    void ChangePictureSize(std::size_t index, PictureSize size);

 protected:
    OfficeDocument(const OfficeTraits& traits, std::string name, Listener listener)
        : m_traits(traits), m_name(std::move(name)), m_listener(std::move(listener)) {}

    // The cells or the text as a file holds them. Taking throws Error 321 for what can't be read.
    [[nodiscard]] virtual std::string Content() const = 0;
    virtual void TakeContent(std::string_view content) = 0;

    void Notify(OfficeChange change) { m_listener(change); }
    // For changes that the file doesn't have yet.
    void Modify(OfficeChange change);

 private:
    void TakeContainer(const std::string& bytes);
    [[nodiscard]] std::string Container() const;
    void NotePartChange();
    [[nodiscard]] bool IsPlain(const std::string& path) const;

    const OfficeTraits& m_traits;
    std::string m_name;
    std::string m_path;
    Listener m_listener;
    std::vector<DocumentPicture> m_pictures;
    std::vector<XmlPart> m_parts;
    std::string m_notice;
    bool m_isModified = false;
};

}  // namespace krv::bench
