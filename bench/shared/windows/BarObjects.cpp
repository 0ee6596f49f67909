#include "bench/shared/windows/BarObjects.h"

#include <array>
#include <utility>

#include "bench/shared/windows/CollectionObject.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

// A button of the command bar, by its position.
class ButtonObject final : public AutomationObject<ButtonObject> {
 public:
    ButtonObject(std::shared_ptr<OfficeAutomation> automation, std::int32_t position)
        : AutomationObject(std::move(automation)), m_position(position) {}

    static std::span<const Member<ButtonObject>> Members() {
        using Own = ButtonObject;
        constexpr auto ReadWrite = MemberKind::ReadWrite;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Caption", &Own::Caption, ReadWrite, true},
             {L"TooltipText", &Own::TooltipText, ReadWrite},
             {L"Enabled", &Own::Enabled, ReadWrite},
             {L"Visible", &Own::Visible, ReadWrite},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t Caption(const MemberCall& call) { return Text(call, &CommandBarButton::caption); }
    _variant_t TooltipText(const MemberCall& call) {
        return Text(call, &CommandBarButton::tooltipText);
    }
    _variant_t Enabled(const MemberCall& call) { return Flag(call, &CommandBarButton::isEnabled); }
    _variant_t Visible(const MemberCall& call) { return Flag(call, &CommandBarButton::isVisible); }

    _variant_t Text(const MemberCall& call, std::string CommandBarButton::*field) {
        return Access(call, field, TextIn);
    }
    _variant_t Flag(const MemberCall& call, bool CommandBarButton::*field) {
        return Access(call, field, FlagIn);
    }
    template <class Field, class FromVariant>
    _variant_t Access(const MemberCall& call, Field CommandBarButton::*field,
                      FromVariant fromVariant) {
        CommandBarModel& bar = Application().GeneratorBar();
        CommandBarButton button = bar.At(m_position);
        if (!call.IsPut()) {
            return AsVariant(button.*field);
        }
        button.*field = fromVariant(call.NewValue());
        bar.Set(m_position, button);
        return {};
    }

    std::int32_t m_position;
};

class CommandBarObject final : public AutomationObject<CommandBarObject> {
 public:
    using AutomationObject::AutomationObject;

    static std::span<const Member<CommandBarObject>> Members() {
        using Own = CommandBarObject;
        static constexpr std::array<Member<Own>, 3> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
             {L"Controls", &Own::GetControls},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t GetName(const MemberCall&) { return AsVariant(Application().GeneratorBar().Name()); }
    _variant_t GetControls(const MemberCall&) {
        const std::shared_ptr<OfficeAutomation> automation = Automation();
        return NewObject<CollectionObject>(
            automation,
            CollectionObject::Content{
                [automation] { return automation->Application().GeneratorBar().Count(); },
                [automation](const _variant_t& key) {
                    const CommandBarModel& bar = automation->Application().GeneratorBar();
                    const std::int32_t position =
                        V_VT(&key) == VT_BSTR ? bar.PositionOf(TextIn(key)) : NumberIn(key);
                    (void)bar.At(position);
                    return NewObject<ButtonObject>(automation, position);
                }});
    }
};

class AddInObject final : public AutomationObject<AddInObject> {
 public:
    AddInObject(std::shared_ptr<OfficeAutomation> automation, std::size_t index)
        : AutomationObject(std::move(automation)), m_index(index) {}

    static std::span<const Member<AddInObject>> Members() {
        using Own = AddInObject;
        static constexpr std::array<Member<Own>, 4> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
             {L"Path", &Own::GetPath},
             {L"Installed", &Own::Installed, MemberKind::ReadWrite},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    AddInEntry& Entry() { return Application().AddIns().at(m_index); }
    _variant_t GetName(const MemberCall&) { return AsVariant(Entry().name); }
    _variant_t GetPath(const MemberCall&) { return AsVariant(Entry().path); }
    _variant_t Installed(const MemberCall& call) {
        if (call.IsPut()) {
            Entry().isInstalled = FlagIn(call.NewValue());
        }
        return AsVariant(Entry().isInstalled);
    }

    std::size_t m_index;
};

std::size_t AddInIndex(const std::vector<AddInEntry>& addIns, const _variant_t& key) {
    for (std::size_t index = 0; index < addIns.size(); ++index) {
        if (V_VT(&key) == VT_BSTR ? EqualIgnoringCase(addIns[index].name, TextIn(key))
                                  : NumberIn(key) == static_cast<std::int32_t>(index) + 1) {
            return index;
        }
    }
    throw Error(ErrorNumber::SubscriptOutOfRange);
}

}  // namespace

_variant_t NewCommandBars(const std::shared_ptr<OfficeAutomation>& automation) {
    return NewObject<CollectionObject>(
        automation, CollectionObject::Content{
                        [] { return 1; },
                        [automation](const _variant_t& key) {
                            const std::string& name =
                                automation->Application().GeneratorBar().Name();
                            if (V_VT(&key) == VT_BSTR ? !EqualIgnoringCase(TextIn(key), name)
                                                      : NumberIn(key) != 1) {
                                throw Error(ErrorNumber::InvalidCall);
                            }
                            return NewObject<CommandBarObject>(automation);
                        }});
}

_variant_t NewAddIns(const std::shared_ptr<OfficeAutomation>& automation) {
    return NewObject<CollectionObject>(
        automation,
        CollectionObject::Content{
            [automation] {
                return static_cast<std::int32_t>(automation->Application().AddIns().size());
            },
            [automation](const _variant_t& key) {
                return NewObject<AddInObject>(automation,
                                              AddInIndex(automation->Application().AddIns(), key));
            }});
}

}  // namespace krv::bench
