#include "bench/shared/windows/ProgramStart.h"

#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>
#include <ole2.h>
#include <shellapi.h>

#include <cstdio>
#include <optional>

#include "common/Error.h"
#include "windows/base/Module.h"
#include "windows/base/WideText.h"

namespace krv::bench {
namespace {

constexpr int Failed = 1;
constexpr int WrongUsage = 2;
constexpr const char* Usage =
    "usage: %s [FILE]... [--screenshot-ready] [--register-as-active]\n"
    "\n"
    "  FILE                  a document (*.%s); krvbook opens comma separated values, too\n"
    "  --screenshot-ready    places the window at the top left of the screen, and writes the line\n"
    "                        \"%s is ready\" to standard output when all of it is drawn\n"
    "  --register-as-active  for tests: registers as the running %s where that\n"
    "                        class was pointed at %s\n";

std::string FullPath(const wchar_t* file) {
    std::vector<wchar_t> path(windows::LongestPath);
    const DWORD length =
        GetFullPathNameW(file, static_cast<DWORD>(path.size()), path.data(), nullptr);
    return windows::ToUtf8({path.data(), length});
}

// Nothing when the command line is wrong.
std::optional<ProgramOptions> ReadCommandLine() {
    std::optional<ProgramOptions> options(std::in_place);
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int index = 1; index < count && options; ++index) {
        const std::string argument = windows::ToUtf8(arguments[index]);
        if (argument == "--screenshot-ready") {
            options->screenshotReady = true;
        } else if (argument == "--register-as-active") {
            options->registerAsActive = true;
        } else if (argument.rfind("--", 0) == 0) {
            options.reset();
        } else {
            options->files.push_back(FullPath(arguments[index]));
        }
    }
    LocalFree(arguments);
    return options;
}

}  // namespace

std::string ProgramFolder() {
    std::vector<wchar_t> path(windows::LongestPath);
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const std::string full = windows::ToUtf8({path.data(), length});
    return full.substr(0, full.find_last_of('\\'));
}

int StartProgram(const char* name, const char* className,
                 const std::function<void(const ProgramOptions&)>& run) {
    const auto options = ReadCommandLine();
    if (!options) {
        std::fprintf(stderr, Usage, name, name, name, className, name);
        return WrongUsage;
    }
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    if (FAILED(OleInitialize(nullptr))) {
        return Failed;
    }
    int result = 0;
    try {
        run(*options);
    } catch (const Error& error) {
        std::fprintf(stderr, "%s: %s\n", name, error.Description().c_str());
        result = Failed;
    }
    OleUninitialize();
    return result;
}

}  // namespace krv::bench
