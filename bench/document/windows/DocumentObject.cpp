#include "bench/document/windows/DocumentObject.h"

#include <algorithm>

#include "bench/document/Document.h"
#include "bench/shared/windows/DocumentObjects.h"
#include "bench/shared/windows/ShapeObjects.h"

namespace krv::bench {
namespace {

std::string Replaced(std::string text, char from, char to) {
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

// The whole text of a document. Callers see paragraphs that each end with a carriage return.
class ContentObject final : public AutomationObject<ContentObject> {
 public:
    ContentObject(std::shared_ptr<OfficeAutomation> automation,
                  std::weak_ptr<OfficeDocument> document)
        : AutomationObject(std::move(automation)), m_document(std::move(document)) {}

    static std::span<const Member<ContentObject>> Members() {
        using Own = ContentObject;
        static constexpr std::array<Member<Own>, 3> Table{
            {{L"Text", &Own::Text, MemberKind::ReadWrite, true},
             {L"InsertAfter", &Own::InsertAfter, MemberKind::TakesArguments},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    [[nodiscard]] std::shared_ptr<Document> Target() const {
        return std::static_pointer_cast<Document>(Automation()->RequireOpen(m_document));
    }
    _variant_t Text(const MemberCall& call) {
        if (call.IsPut()) {
            Target()->SetText(Replaced(TextIn(call.NewValue()), '\r', '\n'));
            return {};
        }
        return AsVariant(Replaced(Target()->Text(), '\n', '\r') + "\r");
    }
    _variant_t InsertAfter(const MemberCall& call) {
        Target()->SetText(Target()->Text() + Replaced(call.Text(0), '\r', '\n'));
        return {};
    }

    std::weak_ptr<OfficeDocument> m_document;
};

class DocumentObject final : public DocumentMembers<DocumentObject> {
 public:
    using DocumentMembers::DocumentMembers;

    static std::span<const Member<DocumentObject>> Members() {
        using Own = DocumentObject;
        static constexpr auto Table =
            Joined(Rows(), std::array<Member<Own>, 2>{
                               {{L"Shapes", &Own::GetShapes}, {L"Content", &Own::GetContent}}});
        return Table;
    }

 private:
    _variant_t GetShapes(const MemberCall&) { return NewShapes(Automation(), Document()); }
    _variant_t GetContent(const MemberCall&) {
        return NewObject<ContentObject>(Automation(), Document());
    }
};

}  // namespace

OfficeAutomation::Object NewTextDocumentObject(const std::shared_ptr<OfficeAutomation>& automation,
                                               const std::shared_ptr<OfficeDocument>& document) {
    return windows::MakeCom<DocumentObject>(automation, document);
}

}  // namespace krv::bench
