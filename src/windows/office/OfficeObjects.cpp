#include "windows/office/OfficeObjects.h"

#include <algorithm>
#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "common/Text.h"
#include "windows/automation/VariantValue.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"

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

constexpr const wchar_t* OwnAddIn = L"KRVAddIn.dll";

// The project's own add-in, beside which its help lies.
class LoadedAddIn final : public ports::AddIn {
 public:
    LoadedAddIn(std::vector<std::shared_ptr<ports::AddIn>> others, const char* suiteName)
        : m_others(std::move(others)), m_suiteName(suiteName) {}
    std::string Name() override { return HasSuites() ? ToUtf8(OwnAddIn) : m_suiteName; }
    std::string Path() override {
        std::vector<wchar_t> path(LongestPath);
        const DWORD length =
            GetModuleFileNameW(GetModuleHandleW(OwnAddIn), path.data(), LongestPath);
        const std::string file = ToUtf8({path.data(), length});
        return file.substr(0, file.find_last_of('\\'));
    }
    // Nothing to be done: it is loaded.
    void SetInstalled(bool /*installed*/) override {}

 private:
    [[nodiscard]] bool HasSuites() const {
        return std::any_of(m_others.begin(), m_others.end(), [this](const auto& other) {
            std::string name;
            TrapErrors([&] { name = other->Name(); });
            return EqualIgnoringCase(name, m_suiteName);
        });
    }

    std::vector<std::shared_ptr<ports::AddIn>> m_others;
    std::string m_suiteName;
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

std::vector<std::shared_ptr<ports::AddIn>> AddInsOf(const LateBound& application,
                                                    const char* suiteName) {
    auto all = EntriesOf<ports::AddIn, AutomationAddIn>(application, L"AddIns");
    if (GetModuleHandleW(OwnAddIn) != nullptr) {
        all.push_back(std::make_shared<LoadedAddIn>(all, suiteName));
    }
    return all;
}

}  // namespace krv::windows
