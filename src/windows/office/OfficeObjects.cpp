#include "windows/office/OfficeObjects.h"

#include <utility>

#include "common/Error.h"
#include "windows/automation/VariantValue.h"

namespace krv::windows {
namespace {

class AutomationControl final : public ports::CommandBarControl {
 public:
    explicit AutomationControl(LateBound control) : m_control(std::move(control)) {}
    void SetEnabled(bool enabled) override { m_control.Put(L"Enabled", ToVariant(enabled)); }
    void SetVisible(bool visible) override { m_control.Put(L"Visible", ToVariant(visible)); }
    void SetTooltipText(const std::string& text) override {
        m_control.Put(L"TooltipText", ToVariant(text));
    }
    void SetCaption(const std::string& caption) override {
        m_control.Put(L"Caption", ToVariant(caption));
    }

 private:
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
    explicit AutomationAddIn(LateBound addIn) : m_addIn(std::move(addIn)) {}
    std::string Name() override { return m_addIn.GetText(L"Name"); }
    std::string Path() override { return m_addIn.GetText(L"Path"); }
    void SetInstalled(bool installed) override { m_addIn.Put(L"Installed", ToVariant(installed)); }

 private:
    LateBound m_addIn;
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
    const LateBound addIns = application.GetObject(L"AddIns");
    const long count = addIns.GetLong(L"Count");
    std::vector<std::shared_ptr<ports::AddIn>> all;
    for (std::int32_t index = 1; index <= count; ++index) {
        all.push_back(
            std::make_shared<AutomationAddIn>(addIns.CallObject(L"Item", {ToVariant(index)})));
    }
    return all;
}

}  // namespace krv::windows
