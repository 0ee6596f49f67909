// Document: one document of the document application: text with pictures.
#pragma once

#include <memory>
#include <string>

#include "bench/shared/OfficeDocument.h"

namespace krv::bench {

class Document final : public OfficeDocument {
 public:
    Document(std::string name, Listener listener);

    // Paragraphs end with a line feed, the last one without.
    [[nodiscard]] const std::string& Text() const { return m_text; }
    void SetText(const std::string& text);

 private:
    [[nodiscard]] std::string Content() const override { return m_text; }
    void TakeContent(std::string_view content) override { m_text = content; }

    std::string m_text;
};

// The traits of the document application.
[[nodiscard]] const OfficeTraits& DocumentTraits();

}  // namespace krv::bench
