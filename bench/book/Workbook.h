// Workbook: one file, or a new book that has none yet, with its one sheet and what is selected on
// it. A file of its own format (*.krvbook) keeps the hosted control's properties, too; any other is
// CSV. Owned by its application, shared with the objects that stand for parts of it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/book/BookChange.h"
#include "bench/book/CsvText.h"
#include "bench/book/RangeText.h"
#include "bench/book/Selection.h"
#include "bench/book/Sheet.h"
#include "bench/shared/DocumentPicture.h"

namespace krv::bench {

class Workbook {
 public:
    // Receives every change of the book; outlives it.
    using Listener = std::function<void(BookChange)>;

    Workbook(std::string name, Listener listener);
    // Paths are UTF-8. Throws Error 53 when there is no such file, 75 when it can't be read, 321
    // when it is damaged or no CSV; each description names the file. Damage to the control's
    // properties alone is shown by Notice.
    [[nodiscard]] static std::shared_ptr<Workbook> Load(const std::string& path, Listener listener);

    // E.g. "wave.csv", or "Book1" without a file.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    // With its folder, where there is one.
    [[nodiscard]] const std::string& FullName() const { return m_path.empty() ? m_name : m_path; }
    [[nodiscard]] bool HasFile() const { return !m_path.empty(); }
    // The name without the file's ending.
    [[nodiscard]] std::string SheetName() const;
    [[nodiscard]] bool IsModified() const { return m_isModified; }

    // Throws Error 75 when the file can't be written; the file on the disk is then as it was.
    void SaveAs(const std::string& path);

    // What the control that is hosted in the book has saved there: the contents of a property bag,
    // from a file that may come from anywhere. Nothing where there was no control.
    [[nodiscard]] const std::optional<std::string>& ControlProperties() const {
        return m_controlProperties;
    }
    void SetControlProperties(std::string properties) {
        m_controlProperties = std::move(properties);
    }
    // The book's file has room for them.
    [[nodiscard]] bool KeepsControl() const;
    // What the user should know of the file as it was opened; empty for nothing.
    [[nodiscard]] const std::string& Notice() const { return m_notice; }

    [[nodiscard]] const Sheet& Cells() const { return m_sheet; }
    void SetCell(CellPosition cell, const Value& value);
    void ClearCells(const CellArea& area);
    // Any work on the cells, which is one change.
    void ChangeCells(const std::function<void(Sheet&)>& work);

    [[nodiscard]] const Selection& Selected() const { return m_selection; }
    void ChangeSelection(const std::function<void(Selection&)>& work);

    // Pictures over the cells, the lowest first; each has its left and top.
    [[nodiscard]] const std::vector<DocumentPicture>& Pictures() const { return m_pictures; }
    // Gives it a name of its own, which is returned. Each throws Error 1004 for a size or a place
    // that no sheet has, and leaves the book as it was.
    std::string AddPicture(DocumentPicture picture);
    // Throws Error 1004 when there is no such picture.
    void ChangePicture(const std::string& name,
                       const std::function<void(DocumentPicture&)>& change);
    void RemovePicture(const std::string& name);
    [[nodiscard]] const DocumentPicture& PictureNamed(const std::string& name) const;

    // The areas of a range text on this book's sheet. Throws Error 1004 when it is none.
    [[nodiscard]] std::vector<CellArea> ResolveRange(const std::string& text) const;

 private:
    void TakeDocument(const std::string& bytes);
    [[nodiscard]] std::string Document() const;
    [[nodiscard]] std::size_t PicturePosition(const std::string& name) const;
    void PicturesChanged();

    std::string m_name;
    std::string m_path;
    Listener m_listener;
    CsvFormat m_format;
    Sheet m_sheet;
    Selection m_selection;
    std::vector<DocumentPicture> m_pictures;
    bool m_isModified = false;
    std::optional<std::string> m_controlProperties;
    std::string m_notice;
};

// A path's last part; both kinds of slashes separate folders.
[[nodiscard]] std::string FileNameOf(const std::string& path);

}  // namespace krv::bench
