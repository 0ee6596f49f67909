#include "bench/shared/windows/ActiveRegistration.h"

#include <array>

#include "common/Error.h"
#include "windows/automation/ComGuard.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

std::string IdentityText(const CLSID& id) {
    // The system takes no text that is longer than an identity's and a NUL.
    std::array<wchar_t, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return windows::ToUtf8(text.data());
}

}  // namespace

ActiveRegistration::ActiveRegistration(IUnknown* application, const std::string& className,
                                       const CLSID& wanted) {
    CLSID id{};
    if (FAILED(CLSIDFromProgID(windows::ToWide(className).c_str(), &id))) {
        throw Error(ErrorNumber::CannotCreateObject,
                    "There is no class \"" + className +
                        "\" to register as active under.  A test's registry needs one that leads "
                        "to " +
                        IdentityText(wanted) + ".");
    }
    if (id != wanted) {
        throw Error(ErrorNumber::ActionNotSupported,
                    "The class \"" + className +
                        "\" belongs to an installed program, whose place the bench doesn't take.");
    }
    windows::ThrowIfFailed(RegisterActiveObject(application, id, ACTIVEOBJECT_STRONG, &m_key));
}

}  // namespace krv::bench
