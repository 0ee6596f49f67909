#include "windows/addin/GeneratorBar.h"

#include <utility>

#include "common/ErrorTrap.h"
#include "windows/automation/EventSubscription.h"
#include "windows/automation/VariantValue.h"
#include "windows/extensibility/OfficeEvents.h"

namespace krv::windows {
namespace {

constexpr const char* BarName = "TQL/KRV Signal Generator";
// The hosts' own constants.
constexpr std::int32_t AtTheTop = 1;
constexpr std::int32_t Button = 1;
constexpr std::int32_t CaptionAlone = 2;

_variant_t LeftOut() {
    return _variant_t(DISP_E_PARAMNOTFOUND, VT_ERROR);
}

// Word keeps command bars in a template, which then asks to be saved.
class UnchangedTemplate {
 public:
    UnchangedTemplate(const LateBound& application, const HostTraits& traits) {
        if (traits.hasBarTemplate) {
            TrapErrors([&] {
                m_template = application.GetObject(L"NormalTemplate");
                m_wasSaved = m_template.GetBool(L"Saved");
                application.PutObject(L"CustomizationContext", m_template.Object());
            });
        }
    }
    UnchangedTemplate(const UnchangedTemplate&) = delete;
    UnchangedTemplate& operator=(const UnchangedTemplate&) = delete;
    ~UnchangedTemplate() {
        if (m_wasSaved) {
            TrapErrors([&] { m_template.Put(L"Saved", ToVariant(true)); });
        }
    }

 private:
    LateBound m_template;
    bool m_wasSaved = false;
};

}  // namespace

GeneratorBar::GeneratorBar(const LateBound& application, const HostTraits& traits,
                           std::function<void(std::size_t)> click)
    : m_application(application), m_traits(traits), m_click(std::move(click)) {
    const UnchangedTemplate unchanged(m_application, m_traits);
    Make();
}

void GeneratorBar::Make() {
    const LateBound bars = m_application.GetObject(L"CommandBars");
    const _variant_t name = ToVariant(std::string(BarName));
    TrapErrors([&] { bars.CallObject(L"Item", {name}).Call(L"Delete"); });
    m_bar = bars.CallObject(L"Add", {name, ToVariant(AtTheTop), ToVariant(false), ToVariant(true)});
    const LateBound controls = m_bar.GetObject(L"Controls");
    for (std::size_t index = 0; index < Commands.size(); ++index) {
        AddButton(controls, index);
    }
}

void GeneratorBar::AddButton(const LateBound& controls, std::size_t index) {
    LateBound button = controls.CallObject(
        L"Add", {ToVariant(Button), LeftOut(), LeftOut(), LeftOut(), ToVariant(true)});
    const std::string caption = Commands[index].caption;
    button.Put(L"Caption", ToVariant(caption));
    button.Put(L"TooltipText", ToVariant(caption));
    button.Put(L"Style", ToVariant(CaptionAlone));
    // Buttons with equal tags share their clicks.
    button.Put(L"Tag", ToVariant("KRVAddIn." + caption));
    m_clicks.push_back(SubscribeToEvents(button.Object(), ButtonEventsId,
                                         [this, index](DISPID event, const auto&) {
                                             if (event == ButtonEvent::Click) {
                                                 m_click(index);
                                             }
                                         }));
    m_buttons.push_back(std::move(button));
}

// The host forgets a temporary bar by itself where it refuses.
GeneratorBar::~GeneratorBar() {
    m_clicks.clear();
    m_buttons.clear();
    TrapErrors([this] {
        const UnchangedTemplate unchanged(m_application, m_traits);
        m_bar.Call(L"Delete");
    });
}

ButtonStates GeneratorBar::States() const {
    ButtonStates states;
    for (std::size_t index = 0; index < m_buttons.size(); ++index) {
        const LateBound& button = m_buttons[index];
        states[index] = {button.GetBool(L"Enabled"), button.GetBool(L"Visible"),
                         button.GetText(L"Caption"), button.GetText(L"TooltipText")};
    }
    return states;
}

void GeneratorBar::Show(bool isShown) const {
    if (m_bar.GetBool(L"Visible") != isShown) {
        const UnchangedTemplate unchanged(m_application, m_traits);
        m_bar.Put(L"Visible", ToVariant(isShown));
    }
}

}  // namespace krv::windows
