#include "bench/shared/windows/AddInObjects.h"

#include <algorithm>
#include <utility>

#include "bench/shared/windows/CollectionObject.h"
#include "common/Text.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

class ComAddInObject final : public AutomationObject<ComAddInObject> {
 public:
    ComAddInObject(std::shared_ptr<OfficeAutomation> automation, std::shared_ptr<ComAddIn> addIn)
        : AutomationObject(std::move(automation)), m_addIn(std::move(addIn)) {}

    static std::span<const Member<ComAddInObject>> Members() {
        using Own = ComAddInObject;
        constexpr auto ReadWrite = MemberKind::ReadWrite;
        static constexpr std::array<Member<Own>, 6> Table{
            {{L"Description", &Own::GetDescription, MemberKind::ReadOnly, true},
             {L"ProgId", &Own::GetProgId},
             {L"Guid", &Own::GetGuid},
             {L"Connect", &Own::Connect, ReadWrite},
             {L"Object", &Own::Object, ReadWrite},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t GetDescription(const MemberCall&) {
        return AsVariant(windows::ToUtf8(m_addIn->Registered().description));
    }
    _variant_t GetProgId(const MemberCall&) {
        return AsVariant(windows::ToUtf8(m_addIn->Registered().progId));
    }
    _variant_t GetGuid(const MemberCall&) {
        return AsVariant(windows::ToUtf8(m_addIn->ClassText()));
    }
    _variant_t Connect(const MemberCall& call) {
        if (call.IsPut() && FlagIn(call.NewValue())) {
            m_addIn->Connect(Automation()->ApplicationObject(), this,
                             windows::ConnectMode::AfterStartup);
        } else if (call.IsPut()) {
            m_addIn->Disconnect(windows::DisconnectMode::UserClosed);
        }
        return AsVariant(m_addIn->IsConnected());
    }
    _variant_t Object(const MemberCall& call) {
        if (call.IsPut()) {
            const _variant_t object = call.NewValue();
            m_addIn->SetObject(V_VT(&object) == VT_DISPATCH ? V_DISPATCH(&object) : nullptr);
        }
        return AsVariant(m_addIn->Object());
    }

    std::shared_ptr<ComAddIn> m_addIn;
};

}  // namespace

_variant_t NewComAddIn(const std::shared_ptr<OfficeAutomation>& automation,
                       const std::shared_ptr<ComAddIn>& addIn) {
    return NewObject<ComAddInObject>(automation, addIn);
}

_variant_t NewComAddIns(const std::shared_ptr<OfficeAutomation>& automation) {
    return NewObject<CollectionObject>(
        automation,
        CollectionObject::Content{
            [automation] { return static_cast<std::int32_t>(automation->AddIns().size()); },
            [automation](const _variant_t& key) {
                std::int32_t position = 0;
                for (const auto& addIn : automation->AddIns()) {
                    ++position;
                    const std::string progId = windows::ToUtf8(addIn->Registered().progId);
                    if (V_VT(&key) == VT_BSTR ? EqualIgnoringCase(progId, TextIn(key))
                                              : NumberIn(key) == position) {
                        return NewComAddIn(automation, addIn);
                    }
                }
                throw Error(ErrorNumber::SubscriptOutOfRange);
            }});
}

}  // namespace krv::bench
