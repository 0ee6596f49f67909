#include "benchmarks/Reading.h"

#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>
#include <vector>

namespace krv::benchmarks {

std::string AsciiText(const char* format, std::size_t values, std::size_t valuesPerLine) {
    std::minstd_rand random(1);
    std::uniform_real_distribution<double> unit(-1, 1);
    std::string text;
    for (std::size_t at = 1; at <= values; ++at) {
        char number[64];
        const int length = std::snprintf(number, sizeof number, format, unit(random));
        text.append(number, static_cast<std::size_t>(length));
        text += at % valuesPerLine == 0 ? "\r\n" : " ";
    }
    return text;
}

void WriteSamples(const std::string& path, std::size_t points) {
    std::mt19937_64 random(1);
    std::ofstream file(path, std::ios::binary);
    std::vector<std::uint64_t> block(std::size_t{32} << 10);
    for (std::size_t left = points * 2; left > 0;) {
        for (std::uint64_t& word : block) {
            word = random();
        }
        const std::size_t bytes = std::min(left, block.size() * sizeof block[0]);
        file.write(reinterpret_cast<const char*>(block.data()),
                   static_cast<std::streamsize>(bytes));
        left -= bytes;
    }
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace krv::benchmarks
