// XML texts as an application reads them: elements with their namespaces, attributes and text.
// Document types aren't read, so that no entity is defined but the five that every text has.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krv::bench {

struct XmlAttribute {
    // Of those without a prefix it is empty.
    std::string space;
    std::string name;
    std::string value;
};

struct XmlElement {
    // The namespace's URI, and the name without its prefix.
    std::string space;
    std::string name;
    std::vector<XmlAttribute> attributes;
    std::vector<XmlElement> children;
    // All text between the tags, the children's left out.
    std::string text;

    // Null when there is none; for attributes without a prefix.
    [[nodiscard]] const std::string* Find(std::string_view attribute) const;
};

// The root element. Throws Error 321, saying what is wrong and in which line, for a text that isn't
// well formed.
[[nodiscard]] XmlElement ParseXml(std::string_view text);

}  // namespace krv::bench
