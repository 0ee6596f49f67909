#include "suite/transport/visa/SharedLibrary.h"

#include <dlfcn.h>

namespace krv::suite {

SharedLibrary LoadSharedLibrary(const std::string& name) {
    using Outcome = SharedLibrary::Outcome;
    if (void* const handle = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL); handle != nullptr) {
        return {Outcome::Loaded, handle, {}};
    }
    const char* const text = dlerror();
    const std::string reason = text == nullptr ? "" : text;
    // One that it needs may be the one that is missing.
    const bool isMissing = reason.starts_with(name + ": cannot open shared object file");
    const bool isOther = reason.find("wrong ELF class") != std::string::npos;
    return {isMissing ? Outcome::Missing : (isOther ? Outcome::OtherBits : Outcome::Refused),
            nullptr, reason};
}

void* FunctionOf(const SharedLibrary& library, const char* name) noexcept {
    return dlsym(library.handle, name);
}

std::vector<std::string> UsualVisaLibraries() {
    return {"libvisa.so", "libvisa.so.7", "librsvisa.so"};
}

}  // namespace krv::suite
