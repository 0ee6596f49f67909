#include "windows/com/ThemedScope.h"

#include <string>

#include "windows/base/Module.h"

namespace krv::windows {
namespace {

// Where a library keeps the manifest for what it itself uses.
constexpr WORD ManifestResource = 2;

HANDLE CreateContext() {
    const std::wstring path = ThisModulePath();
    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    request.lpSource = path.c_str();
    request.hModule = ThisModule();
    request.lpResourceName = MAKEINTRESOURCEW(ManifestResource);
    return CreateActCtxW(&request);
}

}  // namespace

ThemedScope::ThemedScope() : m_context(CreateContext()) {
    m_active = m_context != INVALID_HANDLE_VALUE && ActivateActCtx(m_context, &m_cookie) != FALSE;
}

ThemedScope::~ThemedScope() {
    if (m_active) {
        DeactivateActCtx(0, m_cookie);
    }
    if (m_context != INVALID_HANDLE_VALUE) {
        ReleaseActCtx(m_context);
    }
}

}  // namespace krv::windows
