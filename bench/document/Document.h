// Document: one document of the document application: text, pictures, and the hosted control's
// properties. Owned by its application, shared with the objects that stand for parts of it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/shared/DocumentPicture.h"

namespace krv::bench {

enum class DocumentPart : std::uint8_t { Text, Pictures, File };

class Document {
 public:
    // Hears of every change of the document; outlives it.
    using Listener = std::function<void(DocumentPart)>;

    // The meter outlives the document.
    Document(std::string name, PictureMeter& meter, Listener listener);
    // Paths are UTF-8. Throws Error 53 when there is no such file, 75 when it can't be read, 321
    // when it is no document; each description says what is wrong. Damaged control properties don't
    // keep the document closed: Problem describes them.
    [[nodiscard]] static std::shared_ptr<Document> Load(const std::string& path,
                                                        PictureMeter& meter, Listener listener);

    // E.g. "letter.krvdoc", or "Document1" without a file.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    // With its folder, where there is one.
    [[nodiscard]] const std::string& FullName() const { return m_path.empty() ? m_name : m_path; }
    [[nodiscard]] bool HasFile() const { return !m_path.empty(); }
    [[nodiscard]] bool IsModified() const { return m_isModified; }
    void SetModified(bool isModified) { m_isModified = isModified; }
    // What was wrong with the file, for the user; empty when nothing was.
    [[nodiscard]] const std::string& Problem() const { return m_problem; }

    // Throws Error 75 when the file can't be written, and 380 when the document is too large; the
    // file on the disk is then as it was.
    void SaveAs(const std::string& path);

    // Paragraphs end with a line feed, the last one without.
    [[nodiscard]] const std::string& Text() const { return m_text; }
    void SetText(const std::string& text);

    [[nodiscard]] const std::vector<DocumentPicture>& Pictures() const { return m_pictures; }
    // Indices count from 0. Each throws Error 4608 for a size that is not above 0 or lies beyond
    // what a page may hold, and leaves the document as it was.
    // Further throws Error 53 or 75 for a file that can't be read, 481 for one that is no picture,
    // and 4608 for a picture that is neither linked nor saved.
    std::size_t AddPicture(const PictureToAdd& picture);
    // Throws Error 5941 when there is no such picture.
    void ChangePicture(std::size_t index, const std::function<void(DocumentPicture&)>& change);
    void RemovePicture(std::size_t index);
    // Throws Error 5941 when there is none.
    [[nodiscard]] std::size_t PictureByName(const std::string& name) const;

    // A property bag's contents; nothing for a document that no control was saved in.
    [[nodiscard]] const std::optional<std::string>& ControlProperties() const { return m_control; }
    void SetControlProperties(std::optional<std::string> contents);

 private:
    void Decode(const std::string& bytes);
    [[nodiscard]] std::string Encode() const;
    void Changed(DocumentPart part);
    [[nodiscard]] std::string FreePictureName() const;

    std::string m_name;
    std::string m_path;
    PictureMeter& m_meter;
    Listener m_listener;
    std::string m_text;
    std::vector<DocumentPicture> m_pictures;
    std::optional<std::string> m_control;
    std::string m_problem;
    bool m_isModified = false;
};

}  // namespace krv::bench
