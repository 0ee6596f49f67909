// The ribbon that an add-in describes in XML, checked as strictly as an Office application does:
// one fault drops all of it. Of the controls there are buttons and separators.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace krv::bench {

// A button with its attributes as they stand: "id", "label", "getEnabled".
struct RibbonButton {
    std::map<std::string, std::string> attributes;

    // Empty without the attribute.
    [[nodiscard]] std::string Get(const std::string& attribute) const;
};

struct RibbonGroup {
    std::string label;
    std::vector<RibbonButton> buttons;
};

struct RibbonTab {
    std::string label;
    std::vector<RibbonGroup> groups;
};

struct RibbonDescription {
    // The callback that receives the ribbon; empty for none.
    std::string onLoad;
    std::vector<RibbonTab> tabs;
    // Each name once.
    std::vector<std::string> callbacks;
};

// Throws Error 321, saying what is wrong and where.
[[nodiscard]] RibbonDescription ReadRibbon(std::string_view xml);

}  // namespace krv::bench
