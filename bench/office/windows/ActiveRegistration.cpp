#include "bench/office/windows/ActiveRegistration.h"

#include "common/Error.h"
#include "windows/automation/ComGuard.h"

namespace krv::bench {

ActiveRegistration::ActiveRegistration(IUnknown* application) {
    CLSID id{};
    if (FAILED(CLSIDFromProgID(L"Excel.Application", &id))) {
        throw Error(
            ErrorNumber::CannotCreateObject,
            "There is no class \"Excel.Application\" to register as active under.  A test's "
            "registry needs one that leads to {6B1E70A4-2C57-4B0F-9D33-51E80C7A9462}.");
    }
    if (id != KrvBookClassId) {
        throw Error(ErrorNumber::ActionNotSupported,
                    "The class \"Excel.Application\" belongs to an installed program, whose place "
                    "krvbook doesn't take.");
    }
    windows::ThrowIfFailed(RegisterActiveObject(application, id, ACTIVEOBJECT_STRONG, &m_key));
}

}  // namespace krv::bench
