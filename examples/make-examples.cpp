// Makes the example waveforms: make-examples FOLDER. The same files come out every time.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr int Points = 1000;
constexpr double TwoPi = 2 * std::numbers::pi;

struct Sample {
    double i = 0;
    double q = 0;
};
using Waveform = std::vector<Sample>;

template <class Shape>
Waveform Make(Shape shape) {
    Waveform waveform;
    for (int point = 0; point < Points; ++point) {
        waveform.push_back(shape(static_cast<double>(point) / Points));
    }
    return waveform;
}

// Five turns of a single tone above the carrier.
Sample Sine(double t) {
    return {std::cos(TwoPi * 5 * t), std::sin(TwoPi * 5 * t)};
}

// Eight tones on both sides of the carrier, with phases that keep the peaks low.
Sample Multitone(double t) {
    Sample sum;
    for (int tone = 0; tone < 8; ++tone) {
        const double phase = TwoPi * (2 * tone - 7) * 4 * t + std::numbers::pi * tone * tone / 8;
        sum.i += std::cos(phase) / 8;
        sum.q += std::sin(phase) / 8;
    }
    return sum;
}

// From 40 turns below the carrier to 40 above.
Sample Chirp(double t) {
    const double phase = TwoPi * 40 * (t * t - t);
    return {std::cos(phase), std::sin(phase)};
}

// A raised-cosine pulse with a turning phase, and silence around it.
Sample Pulse(double t) {
    const double fromMiddle = std::abs(t - 0.5);
    if (fromMiddle > 0.25) {
        return {};
    }
    const double height = (1 + std::cos(TwoPi * 2 * fromMiddle)) / 2;
    return {height * std::cos(TwoPi * 20 * t), height * std::sin(TwoPi * 20 * t)};
}

std::string Number(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6f", value);
    return text.data();
}

class Folder {
 public:
    explicit Folder(std::filesystem::path path) : m_path(std::move(path)) {}

    void Write(const std::string& name, const std::string& bytes) const {
        std::ofstream file(m_path / name, std::ios::binary);
        file << bytes;
        file.close();
        if (!file) {
            throw std::runtime_error("Can't write " + (m_path / name).string());
        }
    }

 private:
    std::filesystem::path m_path;
};

std::string TwoBytes(int code, bool bigEndian) {
    const auto bits = static_cast<std::uint16_t>(code);
    const char low = static_cast<char>(bits & 0xFF);
    const char high = static_cast<char>(bits >> 8);
    return bigEndian ? std::string{high, low} : std::string{low, high};
}

int Code16(double value) {
    return static_cast<int>(std::lround(value * 32767));
}

// 14-bit offset binary: 8192 is zero.
int Code14(double value) {
    return static_cast<int>(std::lround(value * 8191)) + 8192;
}

void WriteSine(const Folder& folder) {
    std::string i;
    std::string q;
    std::string markers;
    int point = 0;
    for (const Sample& sample : Make(Sine)) {
        i += Number(sample.i) + '\n';
        q += Number(sample.q) + '\n';
        // Marker 1 over the first 20 points, marker 2 at the start of every turn.
        markers += std::to_string((point < 20 ? 1 : 0) + (point % 200 == 0 ? 2 : 0)) + '\n';
        ++point;
    }
    folder.Write("sineI.txt", i);
    folder.Write("sineQ.txt", q);
    folder.Write("sineMarker.txt", markers);
}

void WriteMultitone(const Folder& folder) {
    std::string interleaved;
    for (const Sample& sample : Make(Multitone)) {
        interleaved += Number(sample.i) + ' ' + Number(sample.q) + '\n';
    }
    folder.Write("multitone.txt", interleaved);
}

void WriteChirp(const Folder& folder) {
    std::string i;
    std::string q;
    for (const Sample& sample : Make(Chirp)) {
        i += TwoBytes(Code14(sample.i), false);
        q += TwoBytes(Code14(sample.q), false);
    }
    folder.Write("chirpI.bin", i);
    folder.Write("chirpQ.bin", q);
    // One byte a point, then as many bytes that are not used.
    constexpr std::size_t points = Points;
    std::string markers(2 * points, '\0');
    markers.replace(0, 50, 50, '\1');
    markers.replace(points / 2, 50, 50, '\3');
    folder.Write("chirpMarker.bin", markers);
}

void WritePulse(const Folder& folder) {
    std::string littleEndian;
    std::string bigEndian;
    for (const Sample& sample : Make(Pulse)) {
        for (const double value : {sample.i, sample.q}) {
            littleEndian += TwoBytes(Code16(value), false);
            bigEndian += TwoBytes(Code16(value), true);
        }
    }
    folder.Write("pulse-le.bin", littleEndian);
    folder.Write("pulse-be.bin", bigEndian);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: make-examples FOLDER\n";
        return 2;
    }
    try {
        const Folder folder(arguments[1]);
        WriteSine(folder);
        WriteMultitone(folder);
        WriteChirp(folder);
        WritePulse(folder);
    } catch (const std::exception& error) {
        std::cerr << "make-examples: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
