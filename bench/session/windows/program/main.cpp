// krvsession: does with the windows on the screen what a user does, step by step from a file.
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "bench/session/windows/ScriptedUser.h"
#include "common/Error.h"

namespace krv::bench {
namespace {

constexpr int WrongUsage = 2;
constexpr const char* Usage =
    "usage: krvsession FILE [--pictures FOLDER] [NAME=VALUE]...\n"
    "\n"
    "Plays the steps in FILE with the windows on the screen, and ends with 1 when one of them\n"
    "can't be done. Each NAME=VALUE is what $NAME stands for.\n"
    "\n"
    "Steps, one a line:\n";

int Play(const std::string& file, const std::string& pictures, const ScriptValues& values) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        std::fprintf(stderr, "krvsession: %s can't be read\n", file.c_str());
        return 1;
    }
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    try {
        ScriptedUser user(pictures, [](const std::string& line) {
            std::puts(line.c_str());
            std::fflush(stdout);
        });
        user.Play(ReadUserScript(text, values));
        return 0;
    } catch (const UserError& error) {
        std::fprintf(stderr, "%s: %s\n", file.c_str(), error.what());
    } catch (const Error& error) {
        std::fprintf(stderr, "%s: %s\n", file.c_str(), error.Description().c_str());
    }
    return 1;
}

}  // namespace
}  // namespace krv::bench

int main(int count, char** arguments) {
    std::string file;
    std::string pictures;
    krv::bench::ScriptValues values;
    for (int index = 1; index < count; ++index) {
        const std::string argument = arguments[index];
        const auto equals = argument.find('=');
        if (argument == "--pictures" && index + 1 < count) {
            pictures = arguments[++index];
        } else if (equals != std::string::npos) {
            values[argument.substr(0, equals)] = argument.substr(equals + 1);
        } else if (file.empty() && argument.rfind("--", 0) != 0) {
            file = argument;
        } else {
            file.clear();
            break;
        }
    }
    if (file.empty()) {
        std::fprintf(stderr, "%s%s", krv::bench::Usage, krv::bench::ScriptedUser::Help().c_str());
        return krv::bench::WrongUsage;
    }
    return krv::bench::Play(file, pictures, values);
}
