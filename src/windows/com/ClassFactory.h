// ClassFactory: creates the objects of one class of the module.
#pragma once

#include "windows/automation/ComObject.h"
#include "windows/com/ComModule.h"

namespace krv::windows {

class ClassFactory final : public ComObject<IClassFactory> {
 public:
    // The description is static.
    explicit ClassFactory(const ComClass& description) : m_class(description) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
    const ComClass& m_class;
};

}  // namespace krv::windows
