#include "bench/shared/windows/BarObjects.h"

#include <array>
#include <utility>

#include "bench/book/BookErrors.h"
#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/CollectionObject.h"
#include "common/Text.h"

namespace krv::bench {
namespace {

// A button of the command bar, by its position.
class ButtonObject final : public OfficeObject<OfficeAutomation, ButtonObject> {
 public:
    ButtonObject(std::shared_ptr<OfficeAutomation> automation, std::int32_t position)
        : OfficeObject(std::move(automation)), m_position(position) {}

    static std::span<const Member<ButtonObject>> Members() {
        using Own = ButtonObject;
        constexpr auto ReadWrite = MemberKind::ReadWrite;
        static constexpr std::array<Member<Own>, 6> Table{
            {{L"Caption", &Own::Caption, ReadWrite, {}, true},
             {L"TooltipText", &Own::TooltipText, ReadWrite},
             {L"Enabled", &Own::Enabled, ReadWrite},
             {L"Visible", &Own::Visible, ReadWrite},
             {L"Index", &Own::GetIndex},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class OfficeObject<OfficeAutomation, ButtonObject>;
    _variant_t Caption(const MemberCall& call) { return Text(call, &CommandBarButton::caption); }
    _variant_t TooltipText(const MemberCall& call) {
        return Text(call, &CommandBarButton::tooltipText);
    }
    _variant_t Enabled(const MemberCall& call) { return Flag(call, &CommandBarButton::isEnabled); }
    _variant_t Visible(const MemberCall& call) { return Flag(call, &CommandBarButton::isVisible); }
    _variant_t GetIndex(const MemberCall&) { return AsVariant(m_position); }

    _variant_t Text(const MemberCall& call, std::string CommandBarButton::*field) {
        return Access(call, field, TextIn);
    }
    _variant_t Flag(const MemberCall& call, bool CommandBarButton::*field) {
        return Access(call, field, FlagIn);
    }
    template <class Field, class FromVariant>
    _variant_t Access(const MemberCall& call, Field CommandBarButton::*field,
                      FromVariant fromVariant) {
        CommandBarModel& bar = Office().GeneratorBar();
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

class CommandBarObject final : public OfficeObject<OfficeAutomation, CommandBarObject> {
 public:
    using OfficeObject::OfficeObject;

    static std::span<const Member<CommandBarObject>> Members() {
        using Own = CommandBarObject;
        static constexpr std::array<Member<Own>, 4> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
             {L"Visible", &Own::Visible, MemberKind::ReadWrite},
             {L"Controls", &Own::GetControls},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class OfficeObject<OfficeAutomation, CommandBarObject>;
    _variant_t GetName(const MemberCall&) { return AsVariant(Office().GeneratorBar().Name()); }
    _variant_t Visible(const MemberCall& call) {
        CommandBarModel& bar = Office().GeneratorBar();
        if (call.IsPut()) {
            bar.SetVisible(FlagIn(call.NewValue()));
        }
        return AsVariant(bar.IsVisible());
    }
    _variant_t GetControls(const MemberCall&) {
        const std::shared_ptr<OfficeAutomation> automation = Automation();
        return Give(windows::MakeCom<CollectionObject>(
            automation,
            CollectionContent{[automation] { return automation->Office().GeneratorBar().Count(); },
                              [automation](const _variant_t& key) {
                                  const CommandBarModel& bar = automation->Office().GeneratorBar();
                                  const std::int32_t position = V_VT(&key) == VT_BSTR
                                                                    ? bar.PositionOf(TextIn(key))
                                                                    : NumberIn(key);
                                  (void)bar.At(position);
                                  return Give(windows::MakeCom<ButtonObject>(automation, position));
                              }}));
    }
};

class AddInObject final : public OfficeObject<OfficeAutomation, AddInObject> {
 public:
    AddInObject(std::shared_ptr<OfficeAutomation> automation, std::size_t index)
        : OfficeObject(std::move(automation)), m_index(index) {}

    static std::span<const Member<AddInObject>> Members() {
        using Own = AddInObject;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, {}, true},
             {L"Path", &Own::GetPath},
             {L"FullName", &Own::GetFullName},
             {L"Installed", &Own::Installed, MemberKind::ReadWrite},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    friend class OfficeObject<OfficeAutomation, AddInObject>;
    AddInEntry& Entry() { return Office().AddIns().at(m_index); }
    _variant_t GetName(const MemberCall&) { return AsVariant(Entry().name); }
    _variant_t GetPath(const MemberCall&) { return AsVariant(Entry().path); }
    _variant_t GetFullName(const MemberCall&) {
        return AsVariant(Entry().path + "\\" + Entry().name);
    }
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

template <class Object, class... Arguments>
_variant_t NewObject(Arguments&&... arguments) {
    return _variant_t(static_cast<IDispatch*>(
        windows::MakeCom<Object>(std::forward<Arguments>(arguments)...).Get()));
}

}  // namespace

_variant_t NewCommandBars(const std::shared_ptr<OfficeAutomation>& automation) {
    return NewObject<CollectionObject>(
        automation,
        CollectionContent{[] { return 1; },
                          [automation](const _variant_t& key) {
                              const std::string& name = automation->Office().GeneratorBar().Name();
                              if (V_VT(&key) == VT_BSTR ? !EqualIgnoringCase(TextIn(key), name)
                                                        : NumberIn(key) != 1) {
                                  throw Error(BookErrorNumber::InvalidCall,
                                              "Invalid procedure call or argument");
                              }
                              return NewObject<CommandBarObject>(automation);
                          }});
}

_variant_t NewAddIns(const std::shared_ptr<OfficeAutomation>& automation) {
    return NewObject<CollectionObject>(
        automation, CollectionContent{
                        [automation] {
                            return static_cast<std::int32_t>(automation->Office().AddIns().size());
                        },
                        [automation](const _variant_t& key) {
                            return NewObject<AddInObject>(
                                automation, AddInIndex(automation->Office().AddIns(), key));
                        }});
}

}  // namespace krv::bench
