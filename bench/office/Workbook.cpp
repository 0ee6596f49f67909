#include "bench/office/Workbook.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "bench/office/BookErrors.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

std::filesystem::path PathOf(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string ReadFile(const std::string& path) {
    std::error_code failure;
    if (!std::filesystem::exists(PathOf(path), failure)) {
        throw Error(ErrorNumber::FileNotFound, "There is no file \"" + path + "\".");
    }
    std::ifstream file(PathOf(path), std::ios::binary | std::ios::ate);
    std::string bytes;
    // A folder opens on some systems, and has no size.
    const std::streamoff size = file && !std::filesystem::is_directory(PathOf(path), failure)
                                    ? std::streamoff(file.tellg())
                                    : -1;
    if (size > 0) {
        bytes.resize(static_cast<std::size_t>(size));
        file.seekg(0);
        file.read(bytes.data(), static_cast<std::streamsize>(size));
    }
    if (size < 0 || !file) {
        throw Error(ErrorNumber::PathFileAccess, "The file \"" + path + "\" can't be read.");
    }
    return bytes;
}

// Beside the file first, so that a full disk doesn't cost what was there.
void WriteFile(const std::string& path, const std::string& bytes) {
    const std::filesystem::path target = PathOf(path);
    std::filesystem::path fresh = target;
    fresh += ".saving";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code failure;
    if (file) {
        std::filesystem::rename(fresh, target, failure);
    }
    if (!file || failure) {
        std::filesystem::remove(fresh, failure);
        throw Error(ErrorNumber::PathFileAccess, "The file \"" + path + "\" can't be written.");
    }
}

}  // namespace

Workbook::Workbook(std::string name, Listener listener)
    : m_name(std::move(name)), m_listener(std::move(listener)) {}

std::shared_ptr<Workbook> Workbook::Load(const std::string& path, Listener listener) {
    auto book = std::make_shared<Workbook>(FileNameOf(path), std::move(listener));
    const std::string bytes = ReadFile(path);
    try {
        book->m_sheet = ReadCsv(bytes, book->m_format);
    } catch (const Error& error) {
        throw Error(error.Number(), "\"" + path + "\": " + error.Description());
    }
    book->m_path = path;
    return book;
}

std::string Workbook::SheetName() const {
    const std::size_t dot = m_name.rfind('.');
    return dot == 0 ? m_name : m_name.substr(0, dot);
}

void Workbook::SaveAs(const std::string& path) {
    WriteFile(path, WriteCsv(m_sheet, m_format));
    m_path = path;
    m_name = FileNameOf(path);
    m_isModified = false;
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
