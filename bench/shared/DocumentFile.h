// DocumentFile: the container that the bench's applications keep their documents in: named sections
// of bytes, each with a checksum of its own, so that damage to one doesn't cost the others. What
// the sections hold is the application's business. docs/file-formats.md describes the format.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace krv::bench {

struct DocumentSection {
    // 1 to 8 printable ASCII characters without blanks, not used twice.
    std::string name;
    std::string bytes;
};

// Names of sections that every application's documents have.
namespace SectionName {
// The application's kind of document, a text.
inline constexpr const char* Kind = "kind";
// What add-ins keep: XML texts.
inline constexpr const char* Parts = "parts";
}  // namespace SectionName

[[nodiscard]] std::string EncodeDocument(std::span<const DocumentSection> sections);

class DocumentFile {
 public:
    // Whether the bytes start as such a file does; others are of another format.
    [[nodiscard]] static bool IsOne(std::string_view bytes) noexcept;

    // The bytes may come from anywhere and outlive this. Throws Error 321, saying what is wrong,
    // for a file that is cut, too long, of a later version or altered in the table of its sections.
    explicit DocumentFile(std::string_view bytes);

    // Nothing when there is no such section. Throws Error 321 when its bytes aren't those that were
    // written.
    [[nodiscard]] std::optional<std::string_view> Section(std::string_view name) const;
    // Throws Error 321 for the document of another application.
    void RequireKind(std::string_view kind) const;

 private:
    struct Entry {
        std::string_view name;
        std::string_view bytes;
        bool isIntact = false;
    };
    std::vector<Entry> m_sections;
};

}  // namespace krv::bench
