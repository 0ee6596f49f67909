#include "bench/shared/windows/AddInRibbon.h"

#include <utility>

#include "bench/shared/windows/AutomationObject.h"
#include "bench/shared/windows/WindowObjects.h"
#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/automation/Query.h"
#include "windows/automation/Variants.h"
#include "windows/base/WideText.h"
#include "windows/extensibility/OfficeInterfaces.h"

namespace krv::bench {
namespace {

using windows::IRibbonUI;
using windows::Query;

[[noreturn]] void Drop(const std::string& why) {
    throw Error(ErrorNumber::InvalidFileFormat, "The ribbon isn't valid: " + why + ".");
}

// A control of the ribbon, as callbacks meet it.
class RibbonControlObject final : public AutomationObject<RibbonControlObject> {
 public:
    RibbonControlObject(std::shared_ptr<OfficeAutomation> automation, const RibbonButton& button)
        : AutomationObject(std::move(automation)), m_button(button) {}

    static std::span<const Member<RibbonControlObject>> Members() {
        using Own = RibbonControlObject;
        static constexpr std::array<Member<Own>, 3> Table{
            {{L"Id", &Own::GetId}, {L"Context", &Own::GetContext}, {L"Tag", &Own::GetTag}}};
        return Table;
    }

 private:
    _variant_t GetId(const MemberCall&) { return AsVariant(m_button.Get("id")); }
    _variant_t GetContext(const MemberCall&) { return NewActiveWindow(Automation()); }
    _variant_t GetTag(const MemberCall&) { return AsVariant(m_button.Get("tag")); }

    const RibbonButton m_button;
};

std::string XmlOf(IUnknown* addIn, const OfficeTraits& traits) {
    const auto extensibility = Query<windows::IRibbonExtensibility>(addIn);
    if (!extensibility) {
        return {};
    }
    const _bstr_t id(traits.hasSheets ? L"Microsoft.Excel.Workbook" : L"Microsoft.Word.Document");
    _bstr_t xml;
    windows::ThrowIfFailed(extensibility->GetCustomUI(id, xml.GetAddress()));
    return windows::TextOf(xml.GetBSTR());
}

}  // namespace

// What the add-in asks the ribbon with.
class AddInRibbon::RibbonUi final : public windows::ComObject<IRibbonUI> {
 public:
    explicit RibbonUi(std::function<void()> invalidated) : m_invalidated(std::move(invalidated)) {}
    void Disconnect() {
        m_invalidated = [] {};
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE Invalidate() override {
        m_invalidated();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE InvalidateControl(BSTR) override { return Invalidate(); }

 protected:
    void* FindInterface(REFIID id) noexcept override {
        return id == IID_IDispatch ? static_cast<IRibbonUI*>(this) : ComObject::FindInterface(id);
    }

 private:
    std::function<void()> m_invalidated;
};

AddInRibbon::AddInRibbon(IUnknown* addIn, std::shared_ptr<OfficeAutomation> automation,
                         std::function<void()> invalidated)
    : m_addIn(Query<IDispatch>(addIn)),
      m_automation(std::move(automation)),
      m_ui(windows::MakeCom<RibbonUi>(std::move(invalidated))) {
    const std::string xml = XmlOf(addIn, m_automation->Traits());
    if (xml.empty()) {
        return;
    }
    m_description = ReadRibbon(xml);
    for (const std::string& callback : m_description.callbacks) {
        std::wstring name = windows::ToWide(callback);
        wchar_t* names = name.data();
        DISPID id = DISPID_UNKNOWN;
        if (!m_addIn || FAILED(m_addIn->GetIDsOfNames(IID_NULL, &names, 1, OwnLocale, &id))) {
            Drop("the callback \"" + callback + "\" is missing");
        }
    }
    if (!m_description.onLoad.empty()) {
        (void)Call(m_description.onLoad, m_ui.Get(), VT_EMPTY);
    }
}

AddInRibbon::~AddInRibbon() {
    m_ui->Disconnect();
}

std::string AddInRibbon::Tab() const {
    return m_description.tabs.empty() ? std::string() : m_description.tabs.front().label;
}

std::vector<BandGroup> AddInRibbon::Groups() {
    // What is shown still uses the former ones.
    const auto former = std::exchange(m_pictures, {});
    std::vector<BandGroup> groups;
    for (const RibbonTab& tab : m_description.tabs) {
        for (const RibbonGroup& group : tab.groups) {
            BandGroup& shown = groups.emplace_back(BandGroup{group.label, {}});
            for (const RibbonButton& button : group.buttons) {
                shown.buttons.push_back(Shown(button));
            }
        }
    }
    return groups;
}

BandButton AddInRibbon::Shown(const RibbonButton& button) {
    BandButton shown;
    const std::string tag = button.Get("tag");
    shown.name = tag.empty() ? button.Get("id") : tag;
    shown.label = TextOf(button, "label", "getLabel");
    shown.tip = TextOf(button, "supertip", "getSupertip");
    if (shown.tip.empty()) {
        shown.tip = TextOf(button, "screentip", "getScreentip");
    }
    shown.isEnabled = FlagOf(button, "enabled", "getEnabled");
    shown.isVisible = FlagOf(button, "visible", "getVisible");
    TakePicture(button, shown);
    shown.click = [this, &button] { Click(button); };
    return shown;
}

std::string AddInRibbon::TextOf(const RibbonButton& button, const std::string& attribute,
                                const std::string& callback) const {
    const std::string name = button.Get(callback);
    if (name.empty()) {
        return button.Get(attribute);
    }
    const _variant_t text = Call(name, ControlOf(button).Get(), VT_BSTR);
    return windows::TextOf(V_BSTR(&text));
}

bool AddInRibbon::FlagOf(const RibbonButton& button, const std::string& attribute,
                         const std::string& callback) const {
    const std::string name = button.Get(callback);
    if (name.empty()) {
        const std::string value = button.Get(attribute);
        return value != "false" && value != "0";
    }
    const _variant_t flag = Call(name, ControlOf(button).Get(), VT_BOOL);
    return V_BOOL(&flag) != VARIANT_FALSE;
}

void AddInRibbon::TakePicture(const RibbonButton& button, BandButton& shown) {
    const std::string name = button.Get("getImage");
    if (name.empty()) {
        return;
    }
    const _variant_t result = Call(name, ControlOf(button).Get(), VT_DISPATCH);
    const auto picture = Query<IPicture>(V_DISPATCH(&result));
    SHORT kind = PICTYPE_NONE;
    OLE_HANDLE handle = 0;
    if (!picture || FAILED(picture->get_Type(&kind)) || kind != PICTYPE_BITMAP ||
        FAILED(picture->get_Handle(&handle))) {
        Drop("\"" + name + "\" gives no picture");
    }
    m_pictures.push_back(picture);
    shown.picture = reinterpret_cast<HBITMAP>(static_cast<ULONG_PTR>(handle));
}

_variant_t AddInRibbon::Call(const std::string& callback, IDispatch* argument, VARTYPE kind) const {
    std::wstring name = windows::ToWide(callback);
    wchar_t* names = name.data();
    DISPID id = DISPID_UNKNOWN;
    m_addIn->GetIDsOfNames(IID_NULL, &names, 1, OwnLocale, &id);
    _variant_t control(argument);
    DISPPARAMS parameters{&control, nullptr, 1, 0};
    _variant_t result;
    const HRESULT called = m_addIn->Invoke(id, IID_NULL, OwnLocale, DISPATCH_METHOD, &parameters,
                                           &result, nullptr, nullptr);
    if (FAILED(called)) {
        Drop("the callback \"" + callback + "\" fails");
    }
    if (V_VT(&result) != kind) {
        Drop("the callback \"" + callback + "\" gives something of another kind");
    }
    return result;
}

OfficeAutomation::Object AddInRibbon::ControlOf(const RibbonButton& button) const {
    return windows::MakeCom<RibbonControlObject>(m_automation, button);
}

void AddInRibbon::Click(const RibbonButton& button) const {
    if (const std::string action = button.Get("onAction"); !action.empty()) {
        (void)Call(action, ControlOf(button).Get(), VT_EMPTY);
    }
}

}  // namespace krv::bench
