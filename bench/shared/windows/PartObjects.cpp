#include "bench/shared/windows/PartObjects.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "bench/shared/XmlText.h"
#include "bench/shared/windows/AutomationObject.h"
#include "common/Error.h"

namespace krv::bench {
namespace {

using Part = OfficeDocument::XmlPart;

class PartObject final : public AutomationObject<PartObject> {
 public:
    PartObject(std::shared_ptr<OfficeAutomation> automation, std::weak_ptr<OfficeDocument> document,
               Part part)
        : AutomationObject(std::move(automation)),
          m_document(std::move(document)),
          m_part(std::move(part)) {}

    static std::span<const Member<PartObject>> Members() {
        using Own = PartObject;
        static constexpr std::array<Member<Own>, 4> Table{{{L"XML", &Own::GetXml},
                                                           {L"NamespaceURI", &Own::GetNamespace},
                                                           {L"Delete", &Own::Delete},
                                                           {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t GetXml(const MemberCall&) { return AsVariant(*m_part); }
    _variant_t GetNamespace(const MemberCall&) { return AsVariant(ParseXml(*m_part).space); }
    _variant_t Delete(const MemberCall&) {
        Automation()->RequireOpen(m_document)->RemoveXmlPart(m_part);
        return {};
    }

    std::weak_ptr<OfficeDocument> m_document;
    Part m_part;
};

// All parts of a document, or those of one namespace.
class PartsObject final : public AutomationObject<PartsObject> {
 public:
    PartsObject(std::shared_ptr<OfficeAutomation> automation,
                std::weak_ptr<OfficeDocument> document,
                std::optional<std::string> space = std::nullopt)
        : AutomationObject(std::move(automation)),
          m_document(std::move(document)),
          m_space(std::move(space)) {}

    static std::span<const Member<PartsObject>> Members() {
        using Own = PartsObject;
        constexpr auto TakesArguments = MemberKind::TakesArguments;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Item", &Own::Item, TakesArguments, true},
             {L"Count", &Own::GetCount},
             {L"Add", &Own::Add, TakesArguments},
             {L"SelectByNamespace", &Own::SelectByNamespace, TakesArguments},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    [[nodiscard]] std::vector<Part> Parts() const {
        std::vector<Part> parts = Automation()->RequireOpen(m_document)->XmlParts();
        std::erase_if(parts, [this](const Part& part) {
            return m_space && ParseXml(*part).space != *m_space;
        });
        return parts;
    }
    _variant_t Item(const MemberCall& call) {
        const std::vector<Part> parts = Parts();
        const auto index = static_cast<std::size_t>(call.Number(0)) - 1;
        if (index >= parts.size()) {
            throw Error(ErrorNumber::SubscriptOutOfRange);
        }
        return NewObject<PartObject>(Automation(), m_document, parts[index]);
    }
    _variant_t GetCount(const MemberCall&) {
        return AsVariant(static_cast<std::int32_t>(Parts().size()));
    }
    _variant_t Add(const MemberCall& call) {
        const auto document = Automation()->RequireOpen(m_document);
        return NewObject<PartObject>(Automation(), m_document, document->AddXmlPart(call.Text(0)));
    }
    _variant_t SelectByNamespace(const MemberCall& call) {
        return NewObject<PartsObject>(Automation(), m_document, call.Text(0));
    }

    std::weak_ptr<OfficeDocument> m_document;
    std::optional<std::string> m_space;
};

}  // namespace

_variant_t NewXmlParts(const std::shared_ptr<OfficeAutomation>& automation,
                       const std::shared_ptr<OfficeDocument>& document) {
    return NewObject<PartsObject>(automation, document);
}

}  // namespace krv::bench
