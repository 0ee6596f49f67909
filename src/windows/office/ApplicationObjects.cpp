#include "windows/office/ApplicationObjects.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <utility>

#include "common/Error.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"
#include "windows/office/AutomationExcel.h"
#include "windows/office/AutomationWord.h"
#include "windows/office/AutomationWorkbook.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

// The applications' own interfaces.
constexpr IID ExcelApplicationId{
    0x000208D5, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr IID WordApplicationId{
    0x00020970, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

// An application or a document of no known kind.
template <class PortObject>
class UnknownKind final : public PortObject, public AutomationPeer {
 public:
    explicit UnknownKind(LateBound object) : m_object(std::move(object)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_object.Object(); }

 private:
    LateBound m_object;
};

bool AnswersFor(IUnknown* application, const IID& id) {
    ComPtr<IUnknown> own;
    return SUCCEEDED(application->QueryInterface(id, reinterpret_cast<void**>(own.GetAddressOf())));
}

// Null for a document without an application.
LateBound ApplicationOf(const LateBound& document) {
    try {
        return document.GetObject(L"Application");
    } catch (const Error&) {
        return {};
    }
}

}  // namespace

std::shared_ptr<ports::HostApplication> HostOf(IDispatch* application) {
    if (application == nullptr) {
        return nullptr;
    }
    LateBound object(application);
    if (AnswersFor(application, ExcelApplicationId)) {
        return std::make_shared<AutomationExcel>(std::move(object));
    }
    if (AnswersFor(application, WordApplicationId)) {
        return std::make_shared<AutomationWord>(std::move(object));
    }
    return std::make_shared<UnknownKind<ports::HostApplication>>(std::move(object));
}

std::shared_ptr<ports::HostDocument> DocumentOf(IDispatch* document) {
    if (document == nullptr) {
        return nullptr;
    }
    LateBound object(document);
    if (const LateBound application = ApplicationOf(object)) {
        if (AnswersFor(application.Object(), ExcelApplicationId)) {
            return std::make_shared<AutomationWorkbook>(std::move(object));
        }
        if (AnswersFor(application.Object(), WordApplicationId)) {
            return std::make_shared<AutomationWordDocument>(std::move(object));
        }
    }
    return std::make_shared<UnknownKind<ports::HostDocument>>(std::move(object));
}

std::shared_ptr<ports::HostApplication> AutomationApplications::GetRunning(
    const std::string& className) {
    CLSID id{};
    ComPtr<IUnknown> running;
    if (FAILED(CLSIDFromProgID(ToWide(className).c_str(), &id)) ||
        FAILED(GetActiveObject(id, nullptr, &running))) {
        throw Error(ErrorNumber::CannotCreateObject, "There is no running \"" + className + "\".");
    }
    return HostOf(LateBound(running.Get()).Object());
}

}  // namespace krv::windows
