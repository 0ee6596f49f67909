#include "cli/Platform.h"

#include <langinfo.h>
#include <locale.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <system_error>

namespace krv::cli {
namespace {

int Descriptor(StandardStream stream) {
    switch (stream) {
        case StandardStream::Input:
            return STDIN_FILENO;
        case StandardStream::Output:
            return STDOUT_FILENO;
        default:
            return STDERR_FILENO;
    }
}

// An empty one counts as not set.
std::optional<std::string> Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? std::optional<std::string>(value) : std::nullopt;
}

}  // namespace

bool IsTerminal(StandardStream stream) {
    return isatty(Descriptor(stream)) == 1;
}

int TerminalWidth(StandardStream stream) {
    winsize size{};
    return ioctl(Descriptor(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

bool TakesSequences() {
    return Variable("TERM").value_or("dumb") != "dumb";
}

bool TakesUtf8() {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", static_cast<locale_t>(nullptr));
    if (locale == static_cast<locale_t>(nullptr)) {
        return false;
    }
    const std::string_view codes = nl_langinfo_l(CODESET, locale);
    const bool isUtf8 = codes == "UTF-8";
    freelocale(locale);
    return isUtf8;
}

void MakeInputBinary() {}

void PrepareTerminal() {}

std::vector<std::string> ProgramArguments(int count, char** arguments) {
    return count > 0 ? std::vector<std::string>(arguments + 1, arguments + count)
                     : std::vector<std::string>();
}

NumberFormat UserNumberFormat() {
    NumberFormat format;
    const locale_t locale = newlocale(LC_NUMERIC_MASK, "", nullptr);
    if (locale == nullptr) {
        return format;
    }
    const std::string_view separator = nl_langinfo_l(RADIXCHAR, locale);
    if (separator.size() == 1 && static_cast<unsigned char>(separator[0]) < 0x80) {
        format.decimalSeparator = separator[0];
    }
    freelocale(locale);
    return format;
}

Environment UserEnvironment() {
    Environment environment;
    environment.address = Variable("KRV_ADDRESS");
    environment.visaLibrary = Variable("KRV_VISA");
    environment.hasNoColor = Variable("NO_COLOR").has_value();
    const auto home = Variable("HOME");
    if (const auto file = Variable("KRV_CONFIG")) {
        environment.configFile = *file;
    } else if (const auto folder = Variable("XDG_CONFIG_HOME")) {
        environment.configFile = *folder + "/krv/config";
    } else if (home) {
        environment.configFile = *home + "/.config/krv/config";
    }
    std::error_code unknown;
    environment.programFolder =
        std::filesystem::read_symlink("/proc/self/exe", unknown).parent_path().string();
    return environment;
}

bool OpenInBrowser(const std::filesystem::path& page) {
    std::string program = "xdg-open";
    std::string file = page.string();
    char* const words[] = {program.data(), file.data(), nullptr};
    pid_t opener = 0;
    if (posix_spawnp(&opener, program.c_str(), nullptr, nullptr, words, environ) != 0) {
        return false;
    }
    int status = 0;
    while (waitpid(opener, &status, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool AreSameName(const std::filesystem::path& left, const std::filesystem::path& right) {
    return left == right;
}

int LocalSecondOfDay() {
    const time_t now = time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    return (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
}

}  // namespace krv::cli
