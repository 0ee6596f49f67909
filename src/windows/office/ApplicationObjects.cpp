#include "windows/office/ApplicationObjects.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <utility>

#include "common/Error.h"
#include "common/ErrorTrap.h"
#include "windows/automation/AutomationPeer.h"
#include "windows/automation/LateBound.h"
#include "windows/base/WideText.h"
#include "windows/office/AutomationExcel.h"
#include "windows/office/AutomationWord.h"
#include "windows/office/AutomationWorkbook.h"

namespace krv::windows {
namespace {

using Microsoft::WRL::ComPtr;

// The own interfaces of the applications and of their documents.
constexpr IID ExcelApplicationId{
    0x000208D5, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr IID WordApplicationId{
    0x00020970, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr IID WorkbookId{
    0x000208DA, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr IID WordDocumentId{
    0x0002096B, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

// From a control to its document there are at most a shape, a chart and a sheet.
constexpr int MostParents = 8;

// An application or a document of no known kind.
template <class PortObject>
class UnknownKind final : public PortObject, public AutomationPeer {
 public:
    explicit UnknownKind(LateBound object) : m_object(std::move(object)) {}
    [[nodiscard]] IDispatch* Automation() const override { return m_object.Object(); }

 private:
    LateBound m_object;
};

bool AnswersFor(IUnknown* object, const IID& id) {
    ComPtr<IUnknown> own;
    return SUCCEEDED(object->QueryInterface(id, reinterpret_cast<void**>(own.GetAddressOf())));
}

bool IsDocument(const LateBound& object) {
    return AnswersFor(object.Object(), WorkbookId) || AnswersFor(object.Object(), WordDocumentId);
}

// The document that a part of it, a worksheet for instance, belongs to; the part itself where none
// is found.
LateBound DocumentAround(const LateBound& part) {
    LateBound document = part;
    TrapErrors([&] {
        for (int parents = 0; document && !IsDocument(document) && parents < MostParents;
             ++parents) {
            document = document.GetObject(L"Parent");
        }
    });
    return document && IsDocument(document) ? document : part;
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
    LateBound object = DocumentAround(LateBound(document));
    if (AnswersFor(object.Object(), WorkbookId)) {
        return std::make_shared<AutomationWorkbook>(std::move(object));
    }
    if (AnswersFor(object.Object(), WordDocumentId)) {
        return std::make_shared<AutomationWordDocument>(std::move(object));
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
