#include "tests/formats/FormatsFixture.h"

#include <fstream>
#include <iterator>
#include <numbers>

#include "common/Error.h"
#include "common/Numbers.h"

namespace krv::tests {

std::string SamplePath(const std::string& name) {
    return std::string(KRV_SOURCE_DIR) + "/tests/formats/samples/" + name;
}

std::string Sample(const std::string& name) {
    std::ifstream file(SamplePath(name), std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::complex<double> TwoTones(std::size_t at) {
    const double turn = 2 * std::numbers::pi * static_cast<double>(at) / 1000;
    return 0.8 * std::polar(1.0, 10 * turn) + 0.1 * std::polar(1.0, -123 * turn);
}

std::string Low(std::uint64_t number, int bytes) {
    std::string text;
    for (int k = 0; k < bytes; ++k) {
        text += static_cast<char>(number >> (8 * k) & 0xFFU);
    }
    return text;
}

formats::ImportedWaveform FormatsFixture::Import(const std::string& name, std::string content) {
    Files.Put(name, std::move(content));
    return formats::Import({Files, name, true}, Options, [] {});
}

formats::ImportedWaveform FormatsFixture::ImportSample(const std::string& name) {
    return Import(name, Sample(name));
}

std::string FormatsFixture::Points(const std::string& name, std::string content) {
    try {
        const formats::ImportedWaveform waveform = Import(name, std::move(content));
        std::string text;
        for (std::size_t at = 0; at < waveform.Points(); ++at) {
            text += (at == 0 ? "" : " | ") + NumberToText(waveform.i[at]);
            text += waveform.HasQ() ? ' ' + NumberToText(waveform.q[at]) : std::string();
        }
        return text;
    } catch (const Error& error) {
        return error.Description();
    }
}

std::vector<std::complex<double>> FormatsFixture::Shares(
    const formats::ImportedWaveform& waveform) {
    std::vector<std::complex<double>> shares;
    for (std::size_t at = 0; at < waveform.Points(); ++at) {
        shares.emplace_back(waveform.i[at] / waveform.fullScale,
                            (waveform.HasQ() ? waveform.q[at] : 0) / waveform.fullScale);
    }
    return shares;
}

}  // namespace krv::tests
