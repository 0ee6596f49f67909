#include "suite/transport/Detached.h"

#include <windows.h>

#include <memory>

#include "suite/transport/TransportErrors.h"

namespace krv::suite {
namespace {

struct Job {
    std::function<void()> work;
    HMODULE module = nullptr;
};

DWORD WINAPI Run(void* parameter) {
    HMODULE module = nullptr;
    {
        const std::unique_ptr<Job> job(static_cast<Job*>(parameter));
        module = job->module;
        try {
            job->work();
        } catch (...) {
            // Nobody waits for it, and the system's frames take no exception.
        }
    }
    // Nothing of this module may run after it has been let go of.
    FreeLibraryAndExitThread(module, 0);
}

}  // namespace

void RunDetached(std::function<void()> work) {
    auto job = std::make_unique<Job>(Job{std::move(work)});
    HANDLE thread = nullptr;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<LPCWSTR>(reinterpret_cast<void*>(&Run)),
                           &job->module) != FALSE) {
        thread = CreateThread(nullptr, 0, &Run, job.get(), 0, nullptr);
    }
    if (thread == nullptr) {
        FreeLibrary(job->module);
        throw ServerError("The system has no thread left.");
    }
    static_cast<void>(job.release());
    CloseHandle(thread);
}

}  // namespace krv::suite
