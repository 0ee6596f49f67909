// Files that other programs have written, against the tones that they were told to write.
#include <cmath>
#include <complex>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "common/files/StandardFiles.h"
#include "formats/Inflate.h"
#include "formats/ProductFiles.h"
#include "formats/Readers.h"
#include "tests/formats/FormatsFixture.h"

namespace krv::tests {
namespace {

struct SampleCase {
    const char* file;
    const char* raw;
    // The largest difference that the writer's own rounding leaves.
    double error;
    // 0 for a file that doesn't tell.
    double rate;
    // Of the values that 1 was written as.
    double one;
};

class SamplesTest : public FormatsFixture {};

TEST_F(SamplesTest, HoldTheTonesThatTheirWritersWereGiven) {
    const double codes = 32767.0 / 32768;
    const SampleCase cases[] = {
        {"gnuradio_cf32_le.cfile", "", 1e-7, 0, 1},
        {"gnuradio_ci8.iq", "ci8", 6e-3, 0, 127.0 / 128},
        {"gnuradio_stereo_float32.wav", "", 1e-7, 1e6, 1},
        {"sox_stereo_pcm16.wav", "", 5e-5, 1e6, codes},
        {"sox_stereo_pcm24_extensible.wav", "", 5e-5, 1e6, 1},
        {"ffmpeg_rf64_pcm16.wav", "", 5e-5, 1e6, codes},
        {"sox_ci16_be.raw", "ci16_be", 5e-5, 0, codes},
        {"sox_cu8.raw", "cu8", 1.2e-2, 0, 1},
        {"numpy_complex64.npy", "", 1e-7, 0, 1},
        {"numpy_i2_be_fortran_1000x2.npy", "", 5e-5, 0, codes},
        {"numpy_compressed_two_arrays.npz", "", 5e-5, 0, codes},
        {"gnutar_archive.sigmf", "", 5e-5, 1e6, codes},
        {"numpy_comma_hash_header.csv", "", 7e-3, 0, 1},
        {"numpy_complex_parentheses.txt", "", 7e-3, 0, 1},
        {"octave_complex_1+2i.txt", "", 7e-3, 0, 1},
        {"octave_tab_noheader.txt", "", 7e-3, 0, 1},
        {"octave_text_complex.txt", "", 7e-3, 0, 1},
        {"pandas_semicolon_decimal_comma_time_bom.csv", "", 7e-3, 1e6, 1},
    };
    for (const SampleCase& each : cases) {
        SCOPED_TRACE(each.file);
        if (formats::MissingToInflate() != nullptr && std::string(each.file).ends_with(".npz")) {
            continue;
        }
        Options = {};
        Options.raw = formats::ParseSampleLayout(each.raw);
        const formats::ImportedWaveform waveform = ImportSample(each.file);
        EXPECT_EQ(waveform.sampleRate.value_or(0), each.rate);
        EXPECT_TRUE(waveform.HasQ());
        const auto points = Shares(waveform);
        EXPECT_GE(points.size(), 23U);
        for (std::size_t at = 0; at < points.size(); ++at) {
            ASSERT_LE(std::abs(points[at] - TwoTones(at) * each.one), each.error) << at;
        }
    }
}

TEST_F(SamplesTest, MatlabFilesOfAllLevels) {
    if (formats::MissingToReadMatlab() != nullptr) {
        GTEST_SKIP() << formats::MissingToReadMatlab();
    }
    files::StandardFiles files;
    for (const char* name :
         {"scipy_v4_int16_rows.mat", "octave_v5_int16_columns.mat", "octave_v7_complex_single.mat",
          "scipy_v5_struct_compressed.mat", "matio_v73_complex_single.mat"}) {
        SCOPED_TRACE(name);
        const formats::ImportedWaveform waveform =
            formats::Import({files, SamplePath(name)}, {}, [] {});
        EXPECT_EQ(waveform.sampleRate, std::string(name).find("_v4_") == std::string::npos
                                           ? std::optional(1e6)
                                           : std::nullopt);
        const auto points = Shares(waveform);
        EXPECT_EQ(points.size(), 1000U);
        for (std::size_t at = 0; at < points.size(); ++at) {
            ASSERT_LE(std::abs(points[at] - TwoTones(at)), 6e-5) << at;
        }
    }
}

TEST_F(SamplesTest, PairsAreFoundByEitherFileAndByNoOther) {
    const std::string data = "gnuradio_ci16.sigmf-data";
    const std::string meta = "gnuradio_ci16.sigmf-meta";
    Files.Put(meta, Sample(meta));
    const auto byData = Shares(ImportSample(data));
    EXPECT_EQ(byData, Shares(ImportSample(meta)));
    ASSERT_EQ(byData.size(), 1000U);
    EXPECT_LE(std::abs(byData[1] - TwoTones(1)), 6e-5);
    Files.Entries.erase(data);
    EXPECT_EQ(Points(meta, Sample(meta)),
              "gnuradio_ci16.sigmf-meta: Its samples aren't there: gnuradio_ci16.sigmf-data.");
}

// The codes of a file of 16-bit samples are its own bytes.
TEST_F(SamplesTest, SixteenBitSamplesStayAsTheyAreAndOthersGoToTheNearestCode) {
    const auto codesOf = [this](const std::string& name) {
        const auto waveform = std::make_shared<formats::ImportedWaveform>(ImportSample(name));
        const auto file = formats::AsWords(formats::Codes16Of(waveform), false);
        std::string bytes(static_cast<std::size_t>(file.bytes), '\0');
        EXPECT_EQ(file.open()->Read(std::as_writable_bytes(std::span(bytes))), bytes.size());
        return bytes;
    };
    const std::string own = Sample("gnuradio_ci16.sigmf-data");
    EXPECT_EQ(codesOf("gnutar_archive.sigmf"), own);
    const std::string wav = Sample("sox_stereo_pcm16.wav");
    EXPECT_EQ(codesOf("sox_stereo_pcm16.wav"), wav.substr(wav.size() - 4000));
    Options.raw = formats::ParseSampleLayout("ci16_be");
    std::string swapped = Sample("sox_ci16_be.raw");
    for (std::size_t at = 0; at < swapped.size(); at += 2) {
        std::swap(swapped[at], swapped[at + 1]);
    }
    EXPECT_EQ(codesOf("sox_ci16_be.raw"), swapped);
}

TEST_F(SamplesTest, IntegersInTextAreCodes) {
    const formats::ImportedWaveform waveform = ImportSample("pandas_tab_utf16_codes.txt");
    EXPECT_EQ(waveform.fullScale, 32768);
    EXPECT_EQ(waveform.format, "text table, tabs, UTF-16");
    for (std::size_t at = 0; at < waveform.Points(); ++at) {
        ASSERT_EQ(waveform.i[at], std::floor(TwoTones(at).real() * 32767 / 256)) << at;
    }
}

}  // namespace
}  // namespace krv::tests
