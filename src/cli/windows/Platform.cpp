#include "cli/Platform.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <optional>

#include "windows/base/Module.h"
#include "windows/base/UserNumberFormat.h"
#include "windows/base/WideText.h"

namespace krv::cli {
namespace {

HANDLE Handle(StandardStream stream) {
    switch (stream) {
        case StandardStream::Input:
            return GetStdHandle(STD_INPUT_HANDLE);
        case StandardStream::Output:
            return GetStdHandle(STD_OUTPUT_HANDLE);
        default:
            return GetStdHandle(STD_ERROR_HANDLE);
    }
}

void TakeCursorMovements(StandardStream stream) {
    constexpr DWORD virtualTerminalProcessing = 0x0004;
    DWORD mode = 0;
    if (GetConsoleMode(Handle(stream), &mode) != 0) {
        SetConsoleMode(Handle(stream), mode | virtualTerminalProcessing);
    }
}

// An empty one counts as not set.
std::optional<std::string> Variable(const wchar_t* name) {
    const wchar_t* const value = _wgetenv(name);
    return value != nullptr && *value != L'\0' ? std::optional<std::string>(windows::ToUtf8(value))
                                               : std::nullopt;
}

}  // namespace

bool IsTerminal(StandardStream stream) {
    DWORD mode = 0;
    return GetConsoleMode(Handle(stream), &mode) != 0;
}

int TerminalWidth(StandardStream stream) {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (GetConsoleScreenBufferInfo(Handle(stream), &screen) == 0) {
        return 80;
    }
    return screen.srWindow.Right - screen.srWindow.Left + 1;
}

bool TakesSequences() {
    return true;
}

bool TakesUtf8() {
    return GetConsoleOutputCP() == CP_UTF8;
}

void MakeInputBinary() {
    _setmode(_fileno(stdin), _O_BINARY);
}

void PrepareTerminal() {
    SetConsoleOutputCP(CP_UTF8);
    TakeCursorMovements(StandardStream::Output);
    TakeCursorMovements(StandardStream::Error);
}

std::vector<std::string> ProgramArguments(int /*count*/, char** /*arguments*/) {
    // The arguments of main lack the characters outside the code page.
    std::vector<std::string> utf8;
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int at = 1; arguments != nullptr && at < count; ++at) {
        utf8.push_back(windows::ToUtf8(arguments[at]));
    }
    LocalFree(arguments);
    return utf8;
}

NumberFormat UserNumberFormat() {
    return windows::UserNumberFormat();
}

Environment UserEnvironment() {
    Environment environment;
    environment.address = Variable(L"KRV_ADDRESS");
    environment.visaLibrary = Variable(L"KRV_VISA");
    environment.hasNoColor = Variable(L"NO_COLOR").has_value();
    if (const auto file = Variable(L"KRV_CONFIG")) {
        environment.configFile = *file;
    } else if (const auto folder = Variable(L"APPDATA")) {
        environment.configFile = *folder + "\\krv\\config";
    }
    environment.programFolder =
        windows::ToUtf8(std::filesystem::path(windows::ThisModulePath()).parent_path().wstring());
    return environment;
}

bool OpenInBrowser(const std::filesystem::path& page) {
    // By an old rule of the system, greater values mean success.
    constexpr INT_PTR lastFailure = 32;
    return reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", page.c_str(), nullptr, nullptr,
                                                   SW_SHOWNORMAL)) > lastFailure;
}

bool AreSameName(const std::filesystem::path& left, const std::filesystem::path& right) {
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

int LocalSecondOfDay() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
}

}  // namespace krv::cli
