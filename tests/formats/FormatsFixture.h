// FormatsFixture: imports of files in memory and of the samples that other programs have written.
#pragma once

#include <gtest/gtest.h>

#include <complex>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "formats/Import.h"
#include "tests/support/MemoryFiles.h"

namespace krv::tests {

// The content of a file in tests/formats/samples.
[[nodiscard]] std::string SamplePath(const std::string& name);
[[nodiscard]] std::string Sample(const std::string& name);
// What the samples hold: two tones, of which point `at` is this.
[[nodiscard]] std::complex<double> TwoTones(std::size_t at);
// So many bytes of a number, low byte first.
[[nodiscard]] std::string Low(std::uint64_t number, int bytes);

class FormatsFixture : public ::testing::Test {
 protected:
    MemoryFiles Files;
    formats::ImportOptions Options;

    // Imports the content as a file of the name.
    formats::ImportedWaveform Import(const std::string& name, std::string content);
    formats::ImportedWaveform ImportSample(const std::string& name);
    // "I Q" of each point with a bar in between, or the error's description.
    std::string Points(const std::string& name, std::string content);
    std::string Points(std::string content) { return Points("data.txt", std::move(content)); }

    // The points, as shares of full scale.
    static std::vector<std::complex<double>> Shares(const formats::ImportedWaveform& waveform);
};

}  // namespace krv::tests
