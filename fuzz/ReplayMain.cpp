// Runs a fuzz target over every file of the folders given. A failing input ends the program with
// its name as the last line printed.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/FuzzTarget.h"

int main(int argc, char** argv) {
    int inputs = 0;
    for (int argument = 1; argument < argc; ++argument) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[argument])) {
            std::printf("%s\n", entry.path().filename().string().c_str());
            std::fflush(stdout);
            std::ifstream file(entry.path(), std::ios::binary);
            const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()),
                                   content.size());
            ++inputs;
        }
    }
    std::printf("%d inputs replayed\n", inputs);
    return inputs > 0 ? 0 : 1;
}
