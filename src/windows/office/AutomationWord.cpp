#include "windows/office/AutomationWord.h"

#include "common/AsKind.h"
#include "common/Error.h"
#include "windows/automation/VariantValue.h"
#include "windows/office/ApplicationObjects.h"
#include "windows/office/OfficeObjects.h"

namespace krv::windows {
namespace {

// Constants of Word's system object, which holds its cursor.
constexpr std::int32_t WordWaitCursor = 0;
constexpr std::int32_t NormalCursor = 2;

class AutomationTemplate final : public ports::WordTemplate {
 public:
    AutomationTemplate(LateBound templates, std::int32_t position)
        : m_templates(std::move(templates)), m_position(position) {}
    bool IsSaved() override { return Entry().GetBool(L"Saved"); }
    void SetSaved(bool isSaved) override { Entry().Put(L"Saved", ToVariant(isSaved)); }

 private:
    // Stays the same template, also when the list changes.
    const LateBound& Entry() {
        if (!m_template) {
            m_template = m_templates.CallObject(L"Item", {ToVariant(m_position)});
        }
        return m_template;
    }

    LateBound m_templates;
    std::int32_t m_position;
    LateBound m_template;
};

}  // namespace

std::shared_ptr<ports::CommandBar> AutomationWord::CommandBarByName(const std::string& name) {
    return CommandBarOf(m_application, name);
}

std::vector<std::shared_ptr<ports::AddIn>> AutomationWord::AddIns() {
    return AddInsOf(m_application, "KRV.DOT");
}

bool AutomationWord::IsStatusBarDisplayed() {
    return m_application.GetBool(L"DisplayStatusBar");
}

void AutomationWord::SetStatusBarText(const std::string& text) {
    m_application.Put(L"StatusBar", ToVariant(text));
}

void AutomationWord::SetBusyCursor(bool isBusy) {
    m_application.GetObject(L"System").Put(L"Cursor",
                                           ToVariant(isBusy ? WordWaitCursor : NormalCursor));
}

std::shared_ptr<ports::WordDocument> AutomationWord::ActiveDocument() {
    LateBound document = m_application.GetObject(L"ActiveDocument");
    if (!document) {
        throw Error(ErrorNumber::ObjectNotSet);
    }
    return std::make_shared<AutomationWordDocument>(std::move(document));
}

std::vector<std::shared_ptr<ports::WordTemplate>> AutomationWord::Templates() {
    return EntriesOf<ports::WordTemplate, AutomationTemplate>(m_application, L"Templates");
}

std::shared_ptr<ports::WordHost> AutomationWordDocument::Application() {
    return AsKind<ports::WordHost>(HostOf(m_document.GetObject(L"Application").Object()));
}

void AutomationWordDocument::AddPicture(const std::string& fileName) {
    m_document.GetObject(L"Shapes").Call(L"AddPicture", {ToVariant(fileName)});
}

}  // namespace krv::windows
