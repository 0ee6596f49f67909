#include <array>
#include <filesystem>
#include <ostream>
#include <string>
#include <system_error>

#include "cli/Commands.h"
#include "cli/ExitCode.h"
#include "cli/Platform.h"
#include "common/Error.h"
#include "common/WholeFile.h"

namespace krv::cli {
namespace {

// Seen from the program's folder: in the Debian package, in an installation on Windows, in a build.
constexpr std::array<const char8_t*, 3> Places{u8"../share/doc/krv/html", u8"help",
                                               u8"../help/html"};

std::string Utf8NameOf(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

// Throws Error, which tells where the guide was looked for.
std::filesystem::path FindGuide(const std::string& programFolder) {
    std::string places;
    for (const char8_t* place : Places) {
        const auto page = (PathOf(programFolder) / place / u8"index.html").lexically_normal();
        std::error_code unknown;
        if (std::filesystem::is_regular_file(page, unknown)) {
            return page;
        }
        places += "\n" + Utf8NameOf(page);
    }
    throw Error(ErrorNumber::FileNotFound,
                "The user guide isn't installed with this krv. It was looked for in:" + places);
}

}  // namespace

int RunOpenGuide(Console& console) {
    const std::filesystem::path page = FindGuide(console.environment.programFolder);
    console.out << Utf8NameOf(page) << std::endl;
    if (!OpenInBrowser(page)) {
        throw Error(ErrorNumber::FileNotFound, "No browser could be opened for this page.");
    }
    return ExitCode::Done;
}

}  // namespace krv::cli
