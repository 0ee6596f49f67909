#include "windows/office/OfficeObjects.h"

#include <utility>

#include "common/Error.h"
#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

class AutomationControl final : public ports::CommandBarControl {
 public:
    explicit AutomationControl(LateBound control) : m_control(std::move(control)) {}
    void SetEnabled(bool enabled) override { Set(L"Enabled", ToVariant(enabled)); }
    void SetVisible(bool visible) override { Set(L"Visible", ToVariant(visible)); }
    void SetTooltipText(const std::string& text) override { Set(L"TooltipText", ToVariant(text)); }
    void SetCaption(const std::string& caption) override { Set(L"Caption", ToVariant(caption)); }

 private:
    void Set(const wchar_t* property, const _variant_t& value) const {
        if (m_control.Get(property) != value) {
            m_control.Put(property, value);
        }
    }

    LateBound m_control;
};

class AutomationCommandBar final : public ports::CommandBar {
 public:
    explicit AutomationCommandBar(LateBound bar) : m_bar(std::move(bar)) {}
    std::int32_t ControlCount() override { return Controls().GetLong(L"Count"); }
    std::shared_ptr<ports::CommandBarControl> ControlAt(std::int32_t position) override {
        return Control(ToVariant(position));
    }
    std::shared_ptr<ports::CommandBarControl> ControlByCaption(
        const std::string& caption) override {
        return Control(ToVariant(caption));
    }

 private:
    [[nodiscard]] LateBound Controls() const { return m_bar.GetObject(L"Controls"); }
    [[nodiscard]] std::shared_ptr<ports::CommandBarControl> Control(const _variant_t& key) const {
        LateBound control = Controls().CallObject(L"Item", {key});
        if (!control) {
            throw Error(ErrorNumber::ObjectNotSet);
        }
        return std::make_shared<AutomationControl>(std::move(control));
    }

    LateBound m_bar;
};

class AutomationAddIn final : public ports::AddIn {
 public:
    AutomationAddIn(LateBound addIns, std::int32_t position)
        : m_addIns(std::move(addIns)), m_position(position) {}
    std::string Name() override { return Entry().GetText(L"Name"); }
    std::string Path() override { return Entry().GetText(L"Path"); }
    void SetInstalled(bool installed) override { Entry().Put(L"Installed", ToVariant(installed)); }

 private:
    [[nodiscard]] LateBound Entry() const {
        return m_addIns.CallObject(L"Item", {ToVariant(m_position)});
    }

    LateBound m_addIns;
    std::int32_t m_position;
};

}  // namespace

std::shared_ptr<ports::CommandBar> CommandBarOf(const LateBound& application,
                                                const std::string& name) {
    LateBound bar = application.GetObject(L"CommandBars").CallObject(L"Item", {ToVariant(name)});
    if (!bar) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return std::make_shared<AutomationCommandBar>(std::move(bar));
}

std::vector<std::shared_ptr<ports::AddIn>> AddInsOf(const LateBound& application) {
    return EntriesOf<ports::AddIn, AutomationAddIn>(application, L"AddIns");
}

}  // namespace krv::windows
