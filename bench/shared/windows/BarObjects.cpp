#include "bench/shared/windows/BarObjects.h"

#include <array>
#include <utility>

#include "bench/shared/windows/CancelArgument.h"
#include "bench/shared/windows/CollectionObject.h"
#include "common/Text.h"
#include "windows/automation/ConnectionPoint.h"
#include "windows/extensibility/OfficeEvents.h"

namespace krv::bench {
namespace {

using Bar = std::shared_ptr<CommandBarModel>;

// A button of a command bar, by its position. It has clicks as long as somebody holds it.
class ButtonObject final : public AutomationObject<ButtonObject, IConnectionPointContainer> {
 public:
    ButtonObject(std::shared_ptr<OfficeAutomation> automation, const Bar& bar,
                 std::int32_t position)
        : AutomationObject(std::move(automation)),
          m_bar(bar),
          m_position(position),
          m_clicks(this, windows::ButtonEventsId),
          m_listener(bar->AddClickListener(position, [this] { RaiseClick(); })) {}
    ~ButtonObject() override {
        if (const Bar bar = m_bar.lock()) {
            bar->RemoveClickListener(m_position, m_listener);
        }
    }

    static std::span<const Member<ButtonObject>> Members() {
        using Own = ButtonObject;
        constexpr auto ReadWrite = MemberKind::ReadWrite;
        static constexpr std::array<Member<Own>, 8> Table{
            {{L"Caption", &Own::Caption, ReadWrite, true},
             {L"TooltipText", &Own::TooltipText, ReadWrite},
             {L"Enabled", &Own::Enabled, ReadWrite},
             {L"Visible", &Own::Visible, ReadWrite},
             {L"Tag", &Own::Tag, ReadWrite},
             {L"Style", &Own::Style, ReadWrite},
             {L"Execute", &Own::Execute},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** points) override {
        return m_clicks.Enumerate(points);
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        return m_clicks.Find(id, point);
    }

 private:
    _variant_t Caption(const MemberCall& call) {
        return Access(call, &CommandBarButton::caption, TextIn);
    }
    _variant_t TooltipText(const MemberCall& call) {
        return Access(call, &CommandBarButton::tooltipText, TextIn);
    }
    _variant_t Enabled(const MemberCall& call) {
        return Access(call, &CommandBarButton::isEnabled, FlagIn);
    }
    _variant_t Visible(const MemberCall& call) {
        return Access(call, &CommandBarButton::isVisible, FlagIn);
    }
    _variant_t Tag(const MemberCall& call) { return Access(call, &CommandBarButton::tag, TextIn); }
    _variant_t Style(const MemberCall& call) {
        return Access(call, &CommandBarButton::style, NumberIn);
    }
    // As a click of the user's.
    _variant_t Execute(const MemberCall&) {
        (void)Present()->Click(m_position);
        return {};
    }

    [[nodiscard]] Bar Present() const {
        const Bar bar = m_bar.lock();
        if (!bar) {
            throw Error(OfficeErrorNumber::ObjectRequired, "The command bar has been deleted.");
        }
        return bar;
    }
    void RaiseClick() {
        const _variant_t own(static_cast<IDispatch*>(this));
        CancelArgument cancel;
        m_clicks.Raise(windows::ButtonEvent::Click, {own, cancel.Reference()});
    }
    template <class Field, class FromVariant>
    _variant_t Access(const MemberCall& call, Field CommandBarButton::*field,
                      FromVariant fromVariant) {
        const Bar bar = Present();
        CommandBarButton button = bar->At(m_position);
        if (!call.IsPut()) {
            return AsVariant(button.*field);
        }
        button.*field = fromVariant(call.NewValue());
        bar->Set(m_position, button);
        return {};
    }

    std::weak_ptr<CommandBarModel> m_bar;
    std::int32_t m_position;
    windows::EventSource m_clicks;
    std::int32_t m_listener;
};

class CommandBarObject final : public AutomationObject<CommandBarObject> {
 public:
    CommandBarObject(std::shared_ptr<OfficeAutomation> automation, const Bar& bar)
        : AutomationObject(std::move(automation)), m_bar(bar) {}

    static std::span<const Member<CommandBarObject>> Members() {
        using Own = CommandBarObject;
        static constexpr std::array<Member<Own>, 5> Table{
            {{L"Name", &Own::GetName, MemberKind::ReadOnly, true},
             {L"Controls", &Own::GetControls},
             {L"Visible", &Own::Visible, MemberKind::ReadWrite},
             {L"Delete", &Own::Delete},
             {L"Application", &Own::GetApplication}}};
        return Table;
    }

 private:
    _variant_t GetName(const MemberCall&) { return AsVariant(m_bar->Name()); }
    _variant_t Visible(const MemberCall& call) {
        if (call.IsPut()) {
            m_bar->Show(FlagIn(call.NewValue()));
        }
        return AsVariant(m_bar->IsVisible());
    }
    _variant_t Delete(const MemberCall&) {
        Application().RemoveCommandBar(m_bar->Name());
        return {};
    }
    _variant_t GetControls(const MemberCall&) {
        const auto automation = Automation();
        const auto item = [automation, bar = m_bar](std::int32_t position) {
            (void)bar->At(position);
            return NewObject<ButtonObject>(automation, bar, position);
        };
        return NewObject<CollectionObject>(
            automation, CollectionObject::Content{[bar = m_bar] { return bar->Count(); },
                                                  [bar = m_bar, item](const _variant_t& key) {
                                                      return item(V_VT(&key) == VT_BSTR
                                                                      ? bar->PositionOf(TextIn(key))
                                                                      : NumberIn(key));
                                                  },
                                                  [bar = m_bar, item](const MemberCall&) {
                                                      bar->Add({});
                                                      return item(bar->Count());
                                                  }});
    }

    Bar m_bar;
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
    const auto barFor = [automation](const _variant_t& key) {
        const OfficeApplication& application = automation->Application();
        if (V_VT(&key) == VT_BSTR) {
            return application.CommandBar(TextIn(key));
        }
        const auto index = static_cast<std::size_t>(NumberIn(key)) - 1;
        if (index >= application.CommandBars().size()) {
            throw Error(ErrorNumber::InvalidCall);
        }
        return application.CommandBars()[index];
    };
    return NewObject<CollectionObject>(
        automation,
        CollectionObject::Content{
            [automation] {
                return static_cast<std::int32_t>(automation->Application().CommandBars().size());
            },
            [automation, barFor](const _variant_t& key) {
                return NewObject<CommandBarObject>(automation, barFor(key));
            },
            [automation](const MemberCall& call) {
                const Bar bar = automation->Application().AddCommandBar(call.Text(0), {});
                bar->Show(false);
                return NewObject<CommandBarObject>(automation, bar);
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
