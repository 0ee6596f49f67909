#include "bench/book/Workbook.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "bench/book/BookErrors.h"
#include "bench/shared/DocumentFile.h"
#include "bench/shared/FileBytes.h"
#include "bench/shared/PictureCoding.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

constexpr const char* FileEnding = ".krvbook";
constexpr const char* KindOfDocument = "workbook";
constexpr const char* CellsSection = "cells";
constexpr const char* PicturesSection = "pictures";
// Anywhere on a sheet.
constexpr PictureLimits SheetPictureLimits{22 * 72, 1e8};

bool HasOwnEnding(const std::string& path) {
    const std::size_t length = std::string_view(FileEnding).size();
    return path.size() > length &&
           EqualIgnoringCase(std::string_view(path).substr(path.size() - length), FileEnding);
}

}  // namespace

Workbook::Workbook(std::string name, Listener listener)
    : m_name(std::move(name)), m_listener(std::move(listener)) {}

std::shared_ptr<Workbook> Workbook::Load(const std::string& path, Listener listener) {
    auto book = std::make_shared<Workbook>(FileNameOf(path), std::move(listener));
    const std::string bytes = ReadFileBytes(path);
    try {
        if (HasOwnEnding(path) || DocumentFile::IsOne(bytes)) {
            book->TakeDocument(bytes);
        } else {
            book->m_sheet = ReadCsv(bytes, book->m_format);
        }
    } catch (const Error& error) {
        throw Error(error.Number(), "\"" + path + "\": " + error.Description());
    }
    book->m_path = path;
    return book;
}

// Without its cells a book is worth nothing; a control can be connected again by hand.
void Workbook::TakeDocument(const std::string& bytes) {
    const DocumentFile file(bytes);
    file.RequireKind(KindOfDocument);
    CsvFormat format;
    m_sheet = ReadCsv(file.Section(CellsSection).value_or(""), format);
    if (const auto pictures = file.Section(PicturesSection)) {
        m_pictures = DecodePictures(*pictures, SheetPictureLimits);
    }
    try {
        m_controlProperties = file.Section(SectionName::Control);
    } catch (const Error& error) {
        m_notice = "The toolbar's settings in \"" + m_name +
                   "\" can't be used, and no instrument is connected.  " + error.Description();
    }
}

std::string Workbook::Document() const {
    std::vector<DocumentSection> sections{{SectionName::Kind, KindOfDocument},
                                          {CellsSection, WriteCsv(m_sheet, {})}};
    if (!m_pictures.empty()) {
        sections.push_back({PicturesSection, EncodePictures(m_pictures)});
    }
    if (m_controlProperties) {
        sections.push_back({SectionName::Control, *m_controlProperties});
    }
    return EncodeDocument(sections);
}

bool Workbook::KeepsControl() const {
    return HasOwnEnding(m_path);
}

std::string Workbook::SheetName() const {
    const std::size_t dot = m_name.rfind('.');
    return dot == 0 ? m_name : m_name.substr(0, dot);
}

void Workbook::SaveAs(const std::string& path) {
    WriteFileBytes(path, HasOwnEnding(path) ? Document() : WriteCsv(m_sheet, m_format));
    m_path = path;
    m_name = FileNameOf(path);
    m_isModified = false;
    m_notice.clear();
    m_listener(BookChange::Books);
}

void Workbook::SetCell(CellPosition cell, const Value& value) {
    ChangeCells([&](Sheet& sheet) { sheet.Set(cell, value); });
}

void Workbook::ClearCells(const CellArea& area) {
    ChangeCells([&](Sheet& sheet) { sheet.Clear(area); });
}

void Workbook::ChangeCells(const std::function<void(Sheet&)>& work) {
    work(m_sheet);
    m_isModified = true;
    m_listener(BookChange::Cells);
}

void Workbook::ChangeSelection(const std::function<void(Selection&)>& work) {
    work(m_selection);
    m_listener(BookChange::Selection);
}

std::string Workbook::AddPicture(DocumentPicture picture) {
    std::size_t number = m_pictures.size();
    do {
        picture.name = "Picture " + std::to_string(++number);
    } while (PicturePosition(picture.name) < m_pictures.size());
    if (!Fits(picture, SheetPictureLimits)) {
        throw MethodFailed("AddPicture", "Shapes");
    }
    m_pictures.push_back(std::move(picture));
    PicturesChanged();
    return m_pictures.back().name;
}

void Workbook::ChangePicture(const std::string& name,
                             const std::function<void(DocumentPicture&)>& change) {
    DocumentPicture changed = PictureNamed(name);
    change(changed);
    if (!Fits(changed, SheetPictureLimits)) {
        throw ApplicationError("The picture \"" + name + "\" can't have this size or place.");
    }
    m_pictures[PicturePosition(name)] = std::move(changed);
    PicturesChanged();
}

void Workbook::RemovePicture(const std::string& name) {
    static_cast<void>(PictureNamed(name));
    m_pictures.erase(m_pictures.begin() + static_cast<std::ptrdiff_t>(PicturePosition(name)));
    PicturesChanged();
}

const DocumentPicture& Workbook::PictureNamed(const std::string& name) const {
    const std::size_t position = PicturePosition(name);
    if (position == m_pictures.size()) {
        throw ApplicationError("There is no picture \"" + name + "\".");
    }
    return m_pictures[position];
}

std::size_t Workbook::PicturePosition(const std::string& name) const {
    const auto found = std::find_if(
        m_pictures.begin(), m_pictures.end(),
        [&](const DocumentPicture& picture) { return EqualIgnoringCase(picture.name, name); });
    return static_cast<std::size_t>(found - m_pictures.begin());
}

void Workbook::PicturesChanged() {
    m_isModified = true;
    m_listener(BookChange::Cells);
}

std::vector<CellArea> Workbook::ResolveRange(const std::string& text) const {
    std::optional<RangeReference> reference = ParseRangeText(text);
    if (!reference ||
        (!reference->sheetName.empty() && !EqualIgnoringCase(reference->sheetName, SheetName()))) {
        throw ApplicationError("\"" + text + "\" is no range of cells.");
    }
    return std::move(reference->areas);
}

std::string FileNameOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace krv::bench
