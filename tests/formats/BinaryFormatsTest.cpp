// Binary formats beyond what the samples show: rare forms, and files that are cut or wrong.
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "formats/Inflate.h"
#include "formats/ProductFiles.h"
#include "formats/SampleChanges.h"
#include "tests/formats/FormatsFixture.h"
#include "tests/support/ErrorOf.h"

namespace krv::tests {
namespace {

using namespace std::string_literals;

class BinaryFormatsTest : public FormatsFixture {
 protected:
    static std::string Chunk(const std::string& id, const std::string& content) {
        return id + Low(content.size(), 4) + content + std::string(content.size() % 2, '\0');
    }
    static std::string WavFormat(unsigned tag, unsigned channels, unsigned bytes) {
        return Chunk("fmt ", Low(tag, 2) + Low(channels, 2) + Low(48000, 4) +
                                 Low(std::uint64_t{48000} * channels * bytes, 4) +
                                 Low(std::uint64_t{channels} * bytes, 2) + Low(bytes * 8, 2));
    }
    static std::string Wav(const std::string& chunks) {
        return "RIFF" + Low(chunks.size() + 4, 4) + "WAVE" + chunks;
    }
    static std::string Npy(const std::string& header, const std::string& values) {
        return "\x93NUMPY\x01"s + '\0' + Low(header.size(), 2) + header + values;
    }
};

TEST_F(BinaryFormatsTest, WavFilesOfOtherKinds) {
    const std::string four = Chunk("data", Low(1, 2) + Low(0xFFFE, 2) + Low(3, 2) + Low(4, 2));
    // An odd chunk in front, and one channel; 8 bits are unsigned; 32 bits.
    EXPECT_EQ(Points("a", Wav(Chunk("LIST", "odd") + WavFormat(1, 1, 2) + four)), "1 | -2 | 3 | 4");
    EXPECT_EQ(Points("a", Wav(WavFormat(1, 1, 1) + Chunk("data", "\x80\xFF\x01"s))),
              "0 | 127 | -127");
    EXPECT_EQ(Points("a", Wav(WavFormat(1, 1, 4) + Chunk("data", Low(0x80000000U, 4)))),
              "-2147483648");
    // A recording that was never closed, and one that was cut.
    for (const unsigned size : {0U, 4096U}) {
        const auto cut =
            Import("a", Wav(WavFormat(1, 2, 2) + "data" + Low(size, 4) + Low(0x20001, 4)));
        EXPECT_EQ(cut.Points(), 1U);
        EXPECT_EQ(cut.warnings.size(), 1U);
    }
    EXPECT_EQ(Points("a", Wav(WavFormat(1, 3, 2) + four)),
              "a: Say which columns are I and Q, as in FILE:1,2. There are column 1, column 2, "
              "column 3.");
}

// Programs write cue points behind the samples, others in front of them.
TEST_F(BinaryFormatsTest, CuePointsOfWavFilesAreMarkers) {
    const auto cue = [](std::uint64_t frame) {
        return Chunk("cue ", Low(1, 4) + Low(1, 4) + std::string(16, '\0') + Low(frame, 4));
    };
    const std::string values = WavFormat(1, 1, 1) + Chunk("data", "abc");
    for (const std::string& chunks :
         {cue(2) + values, values + Chunk("LIST", "odd") + cue(2) + "LIST" + Low(99, 4)}) {
        const auto marked = Import("a", Wav(chunks));
        ASSERT_EQ(marked.markers.Size(), 3U);
        EXPECT_EQ(marked.markers[0] * 100 + marked.markers[1] * 10 + marked.markers[2], 1);
    }
}

TEST_F(BinaryFormatsTest, WavFilesThatAreWrong) {
    const std::string data = Chunk("data", "abcd");
    const std::pair<std::string, const char*> cases[] = {
        {Wav(""), "a, byte 12: The file ends without a data chunk."},
        {Wav(WavFormat(1, 2, 2)), "a, byte 36: The file ends without a data chunk."},
        {Wav(data), "a, byte 20: The data chunk comes before the format chunk."},
        {Wav(Chunk("fmt ", "abc") + data), "a, byte 20: The format chunk is too short."},
        {Wav("LIST" + Low(100, 4)), "a, byte 20: The chunk 'LIST' is cut."},
        {Wav(WavFormat(1, 0, 2) + data), "a, byte 20: 0 channels in frames of 0 bytes can't be."},
        {Wav(WavFormat(2, 2, 2) + data),
         "a, byte 20: Values of kind 2 with 2 bytes are not read; save the file as PCM or floats."},
        {Wav(WavFormat(1, 1, 2) + Chunk("data", "")), "a, byte 44: The file holds no samples."},
        {Wav(WavFormat(3, 1, 4) + Chunk("data", Low(0x7FC00000U, 4))),
         "a, point 0: The value is not a finite number."},
    };
    for (const auto& [content, error] : cases) {
        EXPECT_EQ(Points("a", content), error);
    }
}

TEST_F(BinaryFormatsTest, NumpyArrays) {
    const std::string six = "\1\2\3\4\5\6";
    const std::string i1 = "{'descr': '|i1', 'fortran_order': False, 'shape': (3, 2), }\n";
    EXPECT_EQ(Points("a", Npy(i1, six)), "1 2 | 3 4 | 5 6");
    // Channels by points: all I, then all Q.
    EXPECT_EQ(Points("a", Npy("{'descr': '|i1', 'fortran_order': False, 'shape': (2, 3)}", six)),
              "1 4 | 2 5 | 3 6");
    EXPECT_EQ(Points("a", Npy("{'descr': '|i1', 'fortran_order': True, 'shape': (2, 3)}", six)),
              "1 2 | 3 4 | 5 6");
    EXPECT_EQ(
        Points("a", Npy("{'descr': '<i8', 'fortran_order': False, 'shape': (1,)}", Low(500, 8))),
        "500");
    const auto rounds = [this](std::uint64_t value) {
        const auto waveform = Import(
            "a", Npy("{'descr': '<u8', 'fortran_order': False, 'shape': (1,)}", Low(value, 8)));
        return waveform.done.back() == "Integers beyond 2^53 were rounded to 53 bits.";
    };
    EXPECT_FALSE(rounds((std::uint64_t{1} << 53U) - 1));
    EXPECT_TRUE(rounds((std::uint64_t{1} << 53U) + 1));
    const std::pair<std::string, const char*> cases[] = {
        {Npy(i1, "abc"), "a, byte 73: The file ends before its 3 points do."},
        {"\x93NUMPY", "a, byte 0: This is not the header of an array."},
        {Npy("{'descr': '|O', 'shape': (3,)}", six),
         "a: It holds no array of numbers of a known type."},
        {Npy("{'descr': [('I', '<i2')], 'shape': (3,)}", six),
         "a: It holds no array of numbers of a known type."},
        {Npy("{'descr': '|i1', 'shape': ()}", six),
         "a: The array has not one or two dimensions: save it as points by channels."},
        {Npy("{'descr': '|i1', 'shape': (99999999999999999999,)}", six),
         "a: The array has not one or two dimensions: save it as points by channels."},
        {Npy("{'descr': '|i1', 'shape': (0, 2)}", ""),
         "a: An array of 0 points in 2 channels can't be read."},
    };
    for (const auto& [content, error] : cases) {
        EXPECT_EQ(Points("a", content), error);
    }
}

TEST_F(BinaryFormatsTest, ArchivesThatAreCutOrDamaged) {
    if (formats::MissingToInflate() != nullptr) {
        GTEST_SKIP() << formats::MissingToInflate();
    }
    const std::string npz = Sample("numpy_compressed_two_arrays.npz");
    EXPECT_EQ(Points("a", npz.substr(0, 3000)),
              "a: The archive's directory at its end is missing: the file is cut.");
    std::string damaged = npz;
    damaged.replace(1000, 200, 200, '\xFF');
    EXPECT_EQ(Points("a", damaged), "a: The compressed data is damaged.");
    std::string stored = Sample("../../../fuzz/corpus/NumpyArchiveFuzz/stored");
    EXPECT_EQ(Points("a", stored).substr(0, 11), "25185 27241");
    stored.replace(stored.find("efgh"), 4, "efgX");
    EXPECT_EQ(Points("a", stored), "a, 'I.npy': It is damaged: its checksum differs.");
    for (const char* const method : {"\x0E", "\x63"}) {
        std::string packed = Sample("../../../fuzz/corpus/NumpyArchiveFuzz/stored");
        for (std::size_t at = 0; (at = packed.find("PK\1\2", at)) != std::string::npos; ++at) {
            packed.replace(at + 10, 1, method);
        }
        EXPECT_EQ(Points("a", packed), std::string("a, 'I.npy': It is packed with ") +
                                           (*method == 14 ? "LZMA" : "method 99") +
                                           ", which is not read. Pack it with deflate, or store "
                                           "it.");
    }
    const std::string tar = Sample("gnutar_archive.sigmf");
    EXPECT_EQ(Points("a", tar.substr(0, 2000)), "a, byte 1536: The archive is cut.");
    // Headers and contents take 512 bytes each time; the samples have 4000.
    EXPECT_EQ(
        Import("a", tar.substr(0, 1024 + 512 + 4096) + tar).warnings,
        std::vector<std::string>{"Left out: 'gnuradio_ci16/gnuradio_ci16.sigmf-meta', another "
                                 "recording of the archive."});
    EXPECT_EQ(Points("a", tar.substr(0, 1024) + std::string(1024, '\0')),
              "a: The archive holds no 'gnuradio_ci16/gnuradio_ci16.sigmf-data'.");
}

// A name that is too long for its header stands in front of it.
TEST_F(BinaryFormatsTest, ArchivesWithLongNames) {
    const auto member = [](char kind, const std::string& name, const std::string& content) {
        std::string header(512, '\0');
        char size[12];
        std::snprintf(size, sizeof size, "%011zo", content.size());
        header.replace(0, name.size(), name).replace(124, 11, size).replace(257, 5, "ustar");
        header[156] = kind;
        return header + content + std::string((512 - content.size() % 512) % 512, '\0');
    };
    const std::string folders(120, 'x');
    const auto archive = [&](const auto& longName) {
        std::string text;
        for (const auto& [ending, content] :
             {std::pair{".sigmf-meta", R"({"global": {"core:datatype": "ci8"}})"},
              std::pair{".sigmf-data", "\1\2\3\4"}}) {
            text += longName(folders + ending) + member('0', folders.substr(0, 100), content);
        }
        return text;
    };
    EXPECT_EQ(Points("a", archive([&](const std::string& name) {
                         // Its own length, with the digits of it, is in front of a record.
                         const std::string record = " path=" + name + '\n';
                         return member('x', "pax",
                                       "11 mtime=1\n" + std::to_string(record.size() + 3) + record);
                     })),
              "1 2 | 3 4");
    EXPECT_EQ(Points("a", archive([&](const std::string& name) {
                         return member('L', "././@LongLink", name + '\0');
                     })),
              "1 2 | 3 4");
}

TEST_F(BinaryFormatsTest, SigmfDescriptions) {
    const auto points = [this](const std::string& global, const std::string& more = "") {
        Files.Put("x.sigmf-data", "\1\2\3\4\5\6");
        return Points("x.sigmf-meta",
                      "{\"global\": {\"core:datatype\": " + global + '}' + more + '}');
    };
    EXPECT_EQ(points("\"ci8\""), "1 2 | 3 4 | 5 6");
    EXPECT_EQ(points("\"ri8\", \"core:num_channels\": 2, \"core:trailing_bytes\": 2",
                     ", \"captures\": [{\"core:header_bytes\": 2}]"),
              "3 4");
    EXPECT_EQ(points("\"ci12\""),
              "x.sigmf-meta: The data type (core:datatype) is 'ci12', which is not known.");
    EXPECT_EQ(points("\"ci8\", \"core:dataset\": \"../y\""),
              "x.sigmf-meta: The samples (core:dataset) are in another folder: '../y'.");
    EXPECT_EQ(points("\"ci8\", \"core:trailing_bytes\": 7"),
              "x.sigmf-data: The samples are shorter than what stands around them.");
    EXPECT_EQ(points("\"ci8\", \"core:num_channels\": -3"),
              "x.sigmf-meta: core:num_channels is not a whole number from 0 on.");
    EXPECT_EQ(points("\"ci8\", \"core:sample_rate\": \"x\""),
              "x.sigmf-meta: core:sample_rate is not a number above 0.");
    EXPECT_EQ(points("\"ci8\"", ", \"annotations\": [{\"core:sample_start\": -5}]"),
              "x.sigmf-meta: core:sample_start is not a whole number from 0 on.");
    EXPECT_EQ(points("\"ci8\"", ", \"x\": " + std::string(100, '[') + std::string(100, ']')),
              "x.sigmf-meta: The description is nested too deep.");
    EXPECT_EQ(points("\"ci8\"", ", ]"), "x.sigmf-meta, byte 38: The description is no JSON.");
    static_cast<void>(points(
        "\"ci8\"", ", \"annotations\": [{\"core:sample_start\": 1, \"core:sample_count\": 9}]"));
    const formats::ImportedWaveform marked = formats::Import({Files, "x.sigmf-meta"}, {}, [] {});
    ASSERT_EQ(marked.markers.Size(), 3U);
    EXPECT_EQ(marked.markers[0] * 100 + marked.markers[1] * 10 + marked.markers[2], 11);
    EXPECT_EQ(marked.done.back(), "Marker 1 from 1 annotation.");
    const auto notes = [&](const std::string& global, const std::string& captures) {
        static_cast<void>(points(global, ", \"captures\": [" + captures + ']'));
        return formats::Import({Files, "x.sigmf-meta"}, {}, [] {}).warnings;
    };
    EXPECT_EQ(notes("\"ci8\", \"core:offset\": 5", "{\"core:sample_start\": 5}").size(), 0U);
    EXPECT_EQ(notes("\"ci8\"", "{\"core:sample_start\": 2}").at(0),
              "The capture begins at point 2; the points in front of it were read, too.");
    EXPECT_EQ(
        notes("\"ci8\", \"core:offset\": 5",
              "{\"core:sample_start\": 5}, {\"core:sample_start\": 7}")
            .at(0),
        "The recording has 2 captures, which were read as one. They begin at the points 0, 2.");
    EXPECT_EQ(
        points("\"ci8\"", ", \"captures\": [{\"core:sample_start\": 1, \"core:header_bytes\": 2}]"),
        "x.sigmf-meta: Headers between the captures are not read: save one capture.");
    // A piece of a longer recording; half a sample is at its end.
    static_cast<void>(
        points("\"ci8\", \"core:offset\": 1000, \"core:trailing_bytes\": 1",
               ", \"annotations\": [{\"core:sample_start\": 1001, \"core:sample_count\": 5}, "
               "{\"core:sample_start\": 1, \"core:sample_count\": 999}, "
               "{\"core:sample_start\": 18446744073709551615}]"));
    const formats::ImportedWaveform piece = formats::Import({Files, "x.sigmf-meta"}, {}, [] {});
    ASSERT_EQ(piece.markers.Size(), 2U);
    EXPECT_EQ(piece.markers[0] * 10 + piece.markers[1], 1);
    EXPECT_EQ(piece.warnings,
              (std::vector<std::string>{
                  "The last byte makes no whole sample and was left out.",
                  "Left out: 2 annotations outside the points that were read, the first from "
                  "sample 1 on."}));
}

TEST_F(BinaryFormatsTest, RangesAreCountedInPoints) {
    Options.raw = formats::ParseSampleLayout("ri8");
    Options.firstPoint = 2;
    EXPECT_EQ(Points("a", "\1\2\3\4\5"), "3 | 4 | 5");
    Options.points = 2;
    EXPECT_EQ(Points("a", "\1\2\3\4\5"), "3 | 4");
    Options.firstPoint = 5;
    EXPECT_EQ(Points("a", "\1\2\3\4\5"), "a: There are no points from 5 on: it holds 5.");
    Options.firstPoint = 4;
    const formats::ImportedWaveform end = Import("a", "\1\2\3\4\5");
    EXPECT_EQ(end.done.at(1), "The range is 1 point from point 4 on.");
    EXPECT_EQ(end.warnings,
              std::vector<std::string>{"The range has 1 point from point 4 on, not 2: "
                                       "the file holds 5."});
}

TEST_F(BinaryFormatsTest, CodesEndAtFullScaleAndGoNoFurther) {
    const auto codes = [this](const std::string& table) {
        const auto waveform = std::make_shared<formats::ImportedWaveform>(Import("a.csv", table));
        std::string text;
        for (const auto& each : {formats::Codes16Of(waveform),
                                 formats::Codes14Of(waveform, formats::ProductChannel::I)}) {
            std::vector<double> values(static_cast<std::size_t>(each.count));
            each.copy(0, values);
            for (const double value : values) {
                text += std::to_string(static_cast<int>(value)) + ' ';
            }
        }
        return text;
    };
    EXPECT_EQ(codes("I,Q\n1,-1\n0.5,0.0000152587890625\n"), "32767 -32768 16384 0 16383 12288 ");
    EXPECT_EQ(codes("I\n-32768\n6\n10\n"), "-32768 0 6 0 10 0 0 8194 8194 ");
    EXPECT_EQ(CaughtFrom([&] { return codes("I\n1.5\n"); })->Number(), 6);
}

// A tone that fits the waveform a whole number of times stays that tone at the other rate.
TEST_F(BinaryFormatsTest, ResamplingKeepsTones) {
    Options.raw = formats::ParseSampleLayout("cf32");
    Options.resampleTo = 1;
    EXPECT_EQ(Points("a", std::string(8, '\0')),
              "a: It can't be resampled: it has no sample rate.");
    Options.raw.reset();
    const std::string wav = Sample("gnuradio_stereo_float32.wav");
    for (const double rate : {1.25e6, 1.6e6, 0.5e6}) {
        Options.resampleTo = rate;
        const formats::ImportedWaveform waveform = Import("a.wav", wav);
        EXPECT_EQ(waveform.sampleRate, rate);
        const auto points = Shares(waveform);
        ASSERT_EQ(static_cast<double>(points.size()), rate / 1000);
        for (std::size_t at = 0; at < points.size(); ++at) {
            const double turn =
                2 * std::numbers::pi * static_cast<double>(at) / static_cast<double>(points.size());
            const auto tones =
                0.8 * std::polar(1.0, 10 * turn) + 0.1 * std::polar(1.0, -123 * turn);
            ASSERT_LE(std::abs(points[at] - tones), 1e-4) << rate << ' ' << at;
        }
    }
}

}  // namespace
}  // namespace krv::tests
