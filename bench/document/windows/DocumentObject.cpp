#include "bench/document/windows/DocumentObject.h"

#include "bench/shared/windows/DocumentObjects.h"
#include "bench/shared/windows/ShapeObjects.h"

namespace krv::bench {
namespace {

class DocumentObject final : public DocumentMembers<DocumentObject> {
 public:
    static constexpr IID PublishedId{
        0x0002096B, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
    using DocumentMembers::DocumentMembers;

    static std::span<const Member<DocumentObject>> Members() {
        using Own = DocumentObject;
        static constexpr auto Table =
            Joined(Rows(), std::array<Member<Own>, 1>{{{L"Shapes", &Own::GetShapes}}});
        return Table;
    }

 private:
    _variant_t GetShapes(const MemberCall&) { return NewShapes(Automation(), Document()); }
};

}  // namespace

OfficeAutomation::Object NewTextDocumentObject(const std::shared_ptr<OfficeAutomation>& automation,
                                               const std::shared_ptr<OfficeDocument>& document) {
    return windows::MakeCom<DocumentObject>(automation, document);
}

}  // namespace krv::bench
