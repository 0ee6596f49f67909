#include "windows/addin/DocumentParts.h"

#include "common/ErrorTrap.h"
#include "windows/addin/ControlPart.h"
#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

// Throws Error 321 for a part that can't be read, and the host's Error.
MemoryPropertyBag BagIn(const std::string& xml) {
    MemoryPropertyBag bag;
    bag.SetContents(DecodePart(xml));
    return bag;
}

}  // namespace

std::vector<LateBound> DocumentParts::Parts() const {
    const LateBound found =
        m_document.GetObject(L"CustomXMLParts")
            .CallObject(L"SelectByNamespace", {ToVariant(std::string(PartNamespace))});
    const long count = found.GetLong(L"Count");
    std::vector<LateBound> parts;
    for (std::int32_t position = 1; position <= count; ++position) {
        parts.push_back(found.CallObject(L"Item", {ToVariant(position)}));
    }
    return parts;
}

DocumentParts::Kept DocumentParts::Read() const {
    Kept kept;
    for (const LateBound& part : Parts()) {
        const std::string xml = part.GetText(L"XML");
        if (const auto failure = FailureOf([&] { kept.bag = BagIn(xml); })) {
            kept.damage = failure->Description();
        } else {
            kept.damage.clear();
            break;
        }
    }
    return kept;
}

// The new one is there before the old one goes.
void DocumentParts::Write(const std::vector<std::byte>& contents) const {
    const std::vector<LateBound> old = Parts();
    m_document.GetObject(L"CustomXMLParts").Call(L"Add", {ToVariant(EncodePart(contents))});
    for (const LateBound& part : old) {
        const std::string xml = part.GetText(L"XML");
        if (TrapErrors([&] { (void)BagIn(xml); })) {
            part.Call(L"Delete");
        }
    }
}

}  // namespace krv::windows
