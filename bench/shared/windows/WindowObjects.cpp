#include "bench/shared/windows/WindowObjects.h"

#include <utility>

#include "bench/shared/windows/CollectionObject.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

class WindowObject final : public AutomationObject<WindowObject> {
 public:
    WindowObject(std::shared_ptr<OfficeAutomation> automation,
                 std::weak_ptr<OfficeDocument> document)
        : AutomationObject(std::move(automation)), m_document(std::move(document)) {}

    static std::span<const Member<WindowObject>> Members() {
        using Own = WindowObject;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Caption", &Own::GetCaption, MemberKind::ReadOnly, true},
             {L"Hwnd", &Own::GetHandle},
             {L"Parent", &Own::GetParent},
             {L"Document", &Own::GetParent},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t GetCaption(const MemberCall&) {
        return AsVariant(Automation()->RequireOpen(m_document)->Name());
    }
    // Handles fit into 32 bits on every system.
    _variant_t GetHandle(const MemberCall&) {
        const auto handle = reinterpret_cast<LONG_PTR>(Automation()->Window().MainHandle());
        return AsVariant(static_cast<std::int32_t>(handle));
    }
    _variant_t GetParent(const MemberCall&) {
        return AsVariant(Automation()->ObjectOf(Automation()->RequireOpen(m_document)).Get());
    }

    std::weak_ptr<OfficeDocument> m_document;
};

std::shared_ptr<OfficeDocument> DocumentFor(const OfficeApplication& application,
                                            const _variant_t& key) {
    std::int32_t position = 0;
    for (const auto& document : application.Documents()) {
        ++position;
        if (V_VT(&key) == VT_BSTR ? EqualIgnoringCase(document->Name(), TextIn(key))
                                  : NumberIn(key) == position) {
            return document;
        }
    }
    throw Error(ErrorNumber::SubscriptOutOfRange);
}

}  // namespace

_variant_t NewDocuments(const std::shared_ptr<OfficeAutomation>& automation) {
    return NewObject<CollectionObject>(
        automation,
        CollectionObject::Content{
            [automation] {
                return static_cast<std::int32_t>(automation->Application().Documents().size());
            },
            [automation](const _variant_t& key) {
                return AsVariant(
                    automation->ObjectOf(DocumentFor(automation->Application(), key)).Get());
            },
            [automation](const MemberCall&) {
                return AsVariant(automation->ObjectOf(automation->Application().Add()).Get());
            }});
}

_variant_t NewActiveWindow(const std::shared_ptr<OfficeAutomation>& automation) {
    const auto& document = automation->Application().Active();
    return document ? NewObject<WindowObject>(automation, document)
                    : AsVariant(static_cast<IDispatch*>(nullptr));
}

}  // namespace krv::bench
