#include "bench/shared/RibbonText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <set>
#include <span>

#include "bench/shared/XmlText.h"
#include "common/Error.h"

namespace krv::bench {
namespace {

constexpr std::array<std::string_view, 2> RibbonSpaces{
    "http://schemas.microsoft.com/office/2006/01/customui",
    "http://schemas.microsoft.com/office/2009/07/customui"};
constexpr std::size_t LongestRibbonText = 1024;
constexpr std::size_t LongestKeyTip = 3;

enum class AttributeKind { Id, Name, Text, KeyTip, Truth, Size, Place, Callback };

struct RibbonAttribute {
    std::string_view name;
    AttributeKind kind;
};

constexpr std::array<RibbonAttribute, 2> RootAttributes{
    {{"onLoad", AttributeKind::Callback}, {"loadImage", AttributeKind::Callback}}};
constexpr std::array<RibbonAttribute, 1> RibbonAttributes{
    {{"startFromScratch", AttributeKind::Truth}}};
constexpr std::array<RibbonAttribute, 14> BlockAttributes{
    {{"id", AttributeKind::Id},
     {"idMso", AttributeKind::Name},
     {"idQ", AttributeKind::Name},
     {"tag", AttributeKind::Text},
     {"label", AttributeKind::Text},
     {"getLabel", AttributeKind::Callback},
     {"keytip", AttributeKind::KeyTip},
     {"getKeytip", AttributeKind::Callback},
     {"visible", AttributeKind::Truth},
     {"getVisible", AttributeKind::Callback},
     {"insertAfterMso", AttributeKind::Place},
     {"insertBeforeMso", AttributeKind::Place},
     {"insertAfterQ", AttributeKind::Place},
     {"insertBeforeQ", AttributeKind::Place}}};
constexpr std::array<RibbonAttribute, 26> ButtonAttributes{
    {{"id", AttributeKind::Id},
     {"idMso", AttributeKind::Name},
     {"idQ", AttributeKind::Name},
     {"tag", AttributeKind::Text},
     {"onAction", AttributeKind::Callback},
     {"label", AttributeKind::Text},
     {"getLabel", AttributeKind::Callback},
     {"screentip", AttributeKind::Text},
     {"getScreentip", AttributeKind::Callback},
     {"supertip", AttributeKind::Text},
     {"getSupertip", AttributeKind::Callback},
     {"keytip", AttributeKind::KeyTip},
     {"getKeytip", AttributeKind::Callback},
     {"enabled", AttributeKind::Truth},
     {"getEnabled", AttributeKind::Callback},
     {"visible", AttributeKind::Truth},
     {"getVisible", AttributeKind::Callback},
     {"size", AttributeKind::Size},
     {"getSize", AttributeKind::Callback},
     {"image", AttributeKind::Name},
     {"imageMso", AttributeKind::Name},
     {"getImage", AttributeKind::Callback},
     {"showLabel", AttributeKind::Truth},
     {"showImage", AttributeKind::Truth},
     {"insertAfterMso", AttributeKind::Place},
     {"insertBeforeMso", AttributeKind::Place}}};
// Of each row an element has one at most.
const std::vector<std::vector<std::string_view>> Alternatives{
    {"id", "idMso", "idQ"},
    {"label", "getLabel"},
    {"screentip", "getScreentip"},
    {"supertip", "getSupertip"},
    {"keytip", "getKeytip"},
    {"enabled", "getEnabled"},
    {"visible", "getVisible"},
    {"size", "getSize"},
    {"image", "imageMso", "getImage"},
    {"insertAfterMso", "insertBeforeMso", "insertAfterQ", "insertBeforeQ"}};
// The application's own that add-ins stand beside.
constexpr std::array<std::string_view, 8> KnownParts{
    "TabHome",   "TabInsert", "TabPageLayoutExcel", "TabData",
    "TabReview", "TabView",   "TabAddIns",          "TabDeveloper"};

[[noreturn]] void Refuse(const std::string& what) {
    throw Error(ErrorNumber::InvalidFileFormat, "The ribbon isn't valid: " + what + ".");
}

std::size_t CharactersIn(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    }));
}

bool IsPlainName(std::string_view name) {
    const auto fits = [](char character) {
        return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_' ||
               character == '-' || character == '.';
    };
    return !name.empty() && CharactersIn(name) <= LongestRibbonText &&
           (std::isalpha(static_cast<unsigned char>(name[0])) != 0 || name[0] == '_') &&
           std::all_of(name.begin(), name.end(), fits);
}

bool IsValid(AttributeKind kind, const std::string& value) {
    switch (kind) {
        case AttributeKind::Id:
        case AttributeKind::Callback:
            return IsPlainName(value);
        case AttributeKind::Name:
        case AttributeKind::Text:
            return !value.empty() && CharactersIn(value) <= LongestRibbonText;
        case AttributeKind::KeyTip:
            return !value.empty() && CharactersIn(value) <= LongestKeyTip &&
                   value.find_first_of(" \t\r\n") == std::string::npos;
        case AttributeKind::Truth:
            return value == "true" || value == "false" || value == "1" || value == "0";
        case AttributeKind::Size:
            return value == "normal" || value == "large";
        case AttributeKind::Place:
            return std::find(KnownParts.begin(), KnownParts.end(), value) != KnownParts.end();
    }
    return false;
}

class RibbonReader {
 public:
    explicit RibbonReader(std::string_view xml) : m_root(ParseXml(xml)) {
        m_space = m_root.space;
        if (m_root.name != "customUI" ||
            std::find(RibbonSpaces.begin(), RibbonSpaces.end(), m_space) == RibbonSpaces.end()) {
            Refuse("it doesn't begin with customUI of a known namespace");
        }
    }

    RibbonDescription Read() {
        Check(m_root, RootAttributes);
        if (const std::string* onLoad = m_root.Find("onLoad")) {
            m_read.onLoad = *onLoad;
        }
        const XmlElement& ribbon = Only(m_root, "ribbon");
        Check(ribbon, RibbonAttributes);
        for (const XmlElement& tab : Children(Only(ribbon, "tabs"), "tab")) {
            ReadTab(tab);
        }
        return std::move(m_read);
    }

 private:
    // The one child of the name, without siblings.
    const XmlElement& Only(const XmlElement& parent, std::string_view name) {
        if (Children(parent, name).size() != 1) {
            Refuse("\"" + parent.name + "\" must hold one \"" + std::string(name) + "\"");
        }
        return parent.children.front();
    }
    const std::vector<XmlElement>& Children(const XmlElement& parent, std::string_view name) {
        if (parent.text.find_first_not_of(" \t\r\n") != std::string::npos) {
            Refuse("\"" + parent.name + "\" holds text");
        }
        for (const XmlElement& child : parent.children) {
            const bool isSeparator = name == "button" && child.name == "separator";
            if (child.space != m_space || (child.name != name && !isSeparator)) {
                Refuse("\"" + parent.name + "\" can't hold \"" + child.name + "\"");
            }
        }
        return parent.children;
    }

    void ReadTab(const XmlElement& element) {
        CheckPart(element, BlockAttributes);
        RibbonTab tab{LabelOf(element), {}};
        for (const XmlElement& child : Children(element, "group")) {
            CheckPart(child, BlockAttributes);
            RibbonGroup group{LabelOf(child), {}};
            for (const XmlElement& part : Children(child, "button")) {
                if (part.name == "separator") {
                    CheckPart(part, BlockAttributes);
                    continue;
                }
                CheckPart(part, ButtonAttributes);
                RibbonButton& button = group.buttons.emplace_back();
                for (const XmlAttribute& attribute : part.attributes) {
                    button.attributes[attribute.name] = attribute.value;
                }
            }
            tab.groups.push_back(std::move(group));
        }
        m_read.tabs.push_back(std::move(tab));
    }
    static std::string LabelOf(const XmlElement& element) {
        const std::string* const label = element.Find("label");
        return label != nullptr ? *label : std::string();
    }

    // A part of the ribbon, which has a name.
    void CheckPart(const XmlElement& element, std::span<const RibbonAttribute> known) {
        Check(element, known);
        if (const std::string* own = element.Find("idMso");
            own != nullptr && !IsValid(AttributeKind::Place, *own)) {
            Refuse("\"" + *own + "\" is no part of the application");
        }
        for (const char* kind : {"id", "idMso", "idQ"}) {
            if (const std::string* id = element.Find(kind)) {
                if (!m_ids.insert(*id).second) {
                    Refuse("\"" + *id + "\" is there twice");
                }
                return;
            }
        }
        Refuse("a \"" + element.name + "\" has no id");
    }

    void Check(const XmlElement& element, std::span<const RibbonAttribute> known) {
        for (const XmlAttribute& attribute : element.attributes) {
            const auto found = std::find_if(
                known.begin(), known.end(),
                [&](const RibbonAttribute& each) { return each.name == attribute.name; });
            if (found == known.end() || !attribute.space.empty()) {
                Refuse("\"" + element.name + "\" can't have \"" + attribute.name + "\"");
            }
            if (!IsValid(found->kind, attribute.value)) {
                Refuse("\"" + attribute.value + "\" is no " + attribute.name);
            }
            if (found->kind == AttributeKind::Callback &&
                std::find(m_read.callbacks.begin(), m_read.callbacks.end(), attribute.value) ==
                    m_read.callbacks.end()) {
                m_read.callbacks.push_back(attribute.value);
            }
        }
        for (const auto& row : Alternatives) {
            if (std::count_if(row.begin(), row.end(), [&](std::string_view name) {
                    return element.Find(name) != nullptr;
                }) > 1) {
                Refuse("\"" + element.name + "\" has \"" + std::string(row[0]) +
                       "\" in more than one way");
            }
        }
    }

    XmlElement m_root;
    std::string m_space;
    std::set<std::string> m_ids;
    RibbonDescription m_read;
};

}  // namespace

std::string RibbonButton::Get(const std::string& attribute) const {
    const auto found = attributes.find(attribute);
    return found != attributes.end() ? found->second : std::string();
}

RibbonDescription ReadRibbon(std::string_view xml) {
    return RibbonReader(xml).Read();
}

}  // namespace krv::bench
