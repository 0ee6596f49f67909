// MATLAB files of all levels, by means of matio, which a build may be without.
#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "formats/Fault.h"
#include "formats/MatlabChecks.h"
#include "formats/Readers.h"
#include "formats/SampleType.h"

#ifdef KRV_HAS_MATIO
#include <matio.h>

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "common/Text.h"
#include "formats/FileOnDisk.h"
#include "formats/SampleStreams.h"
#include "formats/SeparateRecording.h"
#endif

namespace krv::formats {
namespace {

using namespace std::string_view_literals;

// Level 4 has no mark: five numbers that only a header has, and a name.
bool IsLevel4(std::span<const std::byte> beginning, bool isBigEndian) {
    constexpr std::size_t HeaderBytes = 20;
    if (beginning.size() <= HeaderBytes) {
        return false;
    }
    std::array<std::int32_t, 5> numbers{};
    for (std::size_t k = 0; k < numbers.size(); ++k) {
        numbers.at(k) = LoadAs<std::int32_t>(beginning.subspan(4 * k), isBigEndian);
    }
    const auto [type, rows, columns, isComplex, nameBytes] = numbers;
    const bool isType =
        type % 1000 >= 0 && type % 1000 <= 52 && type / 1000 == (isBigEndian ? 1 : 0);
    const bool isShape = rows > 0 && columns > 0 && (isComplex == 0 || isComplex == 1);
    if (!isType || !isShape || nameBytes < 2 || nameBytes > 64) {
        return false;
    }
    const std::string_view name =
        TextOf(beginning).substr(HeaderBytes, static_cast<std::size_t>(nameBytes));
    return name.back() == '\0' && std::all_of(name.begin(), name.end() - 1, [](char letter) {
               return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_';
           });
}

enum class MatlabLevel : std::uint8_t { None, Level4, Level5, Level73 };

struct MatlabKind {
    MatlabLevel level = MatlabLevel::None;
    bool isBigEndian = false;
};

MatlabKind KindOf(std::span<const std::byte> beginning) {
    const std::string_view text = TextOf(beginning);
    const std::string_view mark = text.size() < 128 ? ""sv : text.substr(124, 4);
    if (mark == "\0\1IM"sv || mark == "\1\0MI"sv) {
        return {MatlabLevel::Level5, mark == "\1\0MI"sv};
    }
    if (mark == "\0\2IM"sv) {
        return {MatlabLevel::Level73};
    }
    for (const bool isBigEndian : {false, true}) {
        if (IsLevel4(beginning, isBigEndian)) {
            return {MatlabLevel::Level4, isBigEndian};
        }
    }
    return {};
}

}  // namespace

bool IsMatlab(const Opening& opening) {
    return KindOf(opening.beginning).level != MatlabLevel::None;
}

#ifdef KRV_HAS_MATIO
namespace {

using MatlabArray = std::shared_ptr<matvar_t>;

constexpr std::size_t MostMatlabChannels = 64;
constexpr std::uint64_t MostMatlabValues = std::uint64_t{1} << 31U;

// How the values of a class are kept, once they are read; nothing for what holds no numbers.
std::optional<SampleType> TypeOfClass(matio_classes kind) {
    constexpr bool IsBig = std::endian::native == std::endian::big;
    switch (kind) {
        case MAT_C_DOUBLE:
            return SampleType{SampleKind::Float, 8, IsBig};
        case MAT_C_SINGLE:
            return SampleType{SampleKind::Float, 4, IsBig};
        case MAT_C_INT8:
            return SampleType{SampleKind::Signed, 1, IsBig};
        case MAT_C_UINT8:
            return SampleType{SampleKind::Unsigned, 1, IsBig};
        case MAT_C_INT16:
            return SampleType{SampleKind::Signed, 2, IsBig};
        case MAT_C_UINT16:
            return SampleType{SampleKind::Unsigned, 2, IsBig};
        case MAT_C_INT32:
            return SampleType{SampleKind::Signed, 4, IsBig};
        case MAT_C_UINT32:
            return SampleType{SampleKind::Unsigned, 4, IsBig};
        case MAT_C_INT64:
            return SampleType{SampleKind::Signed, 8, IsBig};
        case MAT_C_UINT64:
            return SampleType{SampleKind::Unsigned, 8, IsBig};
        default:
            return std::nullopt;
    }
}

class MatlabContent {
 public:
    // Of a file that was checked: the library takes what it says for true.
    MatlabContent(std::string name, const std::string& path)
        : m_name(std::move(name)), m_file(Mat_Open(path.c_str(), MAT_ACC_RDONLY), Mat_Close) {
        if (!m_file) {
            throw MatlabDamage(m_name);
        }
        while (matvar_t* const variable = Mat_VarReadNextInfo(m_file.get())) {
            Take(MatlabArray(variable, Mat_VarFree));
        }
        if (m_streams.empty()) {
            throw FileFault(m_name, "It holds no array of numbers with two values or more." +
                                        (m_about.notes.empty() ? "" : ' ' + m_about.notes[0]));
        }
    }

    std::unique_ptr<Recording> Open() {
        m_about.format = "MATLAB, " + DescribeType(m_streams.front().type);
        // One array of complex numbers needs no name of its own.
        if (m_about.isComplex && m_streams.size() == 2) {
            m_about.columns[0].name = "I";
            m_about.columns[1].name = "Q";
        }
        return std::make_unique<SampleStreams>(m_name, std::move(m_about), std::move(m_streams));
    }

 private:
    void Take(const MatlabArray& variable) {
        const bool isTaken = IsStructure(*variable) || IsReadable(*variable);
        if (!isTaken || Mat_VarReadDataAll(m_file.get(), variable.get()) == 0) {
            TakeMember(variable, *variable, "");
        } else if (IsStructure(*variable)) {
            // There are fields that the library doesn't know, such as functions.
            m_about.notes.push_back("Left out: " + QuotedExcerpt(NameOfArray(*variable)) +
                                    ", a structure that can't be read. Save the arrays in it as "
                                    "variables.");
        } else {
            throw MatlabDamage(m_name);
        }
    }

    // A variable or a field of one, which keeps it; what it holds has been read. The path leads to
    // the field.
    void TakeMember(const MatlabArray& owner, matvar_t& array, const std::string& path) {
        if (IsStructure(array)) {
            for (std::size_t k = 0; k < Mat_VarGetNumberOfFields(&array); ++k) {
                if (auto* const field = Mat_VarGetStructFieldByIndex(&array, k, 0)) {
                    TakeMember(owner, *field, path + NameOfArray(array) + '.');
                }
            }
        } else if (IsReadable(array)) {
            TakeArray(owner, array, path);
        } else if (const std::string what = WhatIsNotRead(array); !what.empty()) {
            m_about.notes.push_back("Left out: " + QuotedExcerpt(NameOfArray(array)) + ", which " +
                                    what);
        }
    }

    static bool IsStructure(const matvar_t& array) {
        return array.class_type == MAT_C_STRUCT && array.rank == 2 && array.dims != nullptr &&
               array.dims[0] == 1 && array.dims[1] == 1;
    }

    // Empty for what holds no values, such as letters.
    static std::string WhatIsNotRead(const matvar_t& array) {
        switch (array.class_type) {
            case MAT_C_CELL:
                return "is a cell array. Save what is in it as variables.";
            case MAT_C_STRUCT:
                return "is an array of structures. Save the arrays in it as variables.";
            case MAT_C_SPARSE:
                return "is sparse. Save it with full().";
            default:
                return TypeOfClass(array.class_type) && array.rank > 2
                           ? "has " + std::to_string(array.rank) + " dimensions."
                           : std::string();
        }
    }

    static std::string NameOfArray(const matvar_t& array) {
        return array.name != nullptr ? array.name : "";
    }

    [[nodiscard]] static bool IsReadable(const matvar_t& array) {
        return TypeOfClass(array.class_type) && array.rank == 2 && array.dims != nullptr &&
               array.dims[0] > 0 && array.dims[1] > 0 &&
               array.dims[0] <= MostMatlabValues / array.dims[1];
    }

    // The owner keeps the array. The longest arrays are the waveform.
    void TakeArray(const MatlabArray& owner, const matvar_t& array, const std::string& path) {
        const std::string name = NameOfArray(array);
        const std::size_t rows = array.dims[0];
        const std::size_t columns = array.dims[1];
        if (array.data == nullptr) {
            throw MatlabDamage(m_name);
        }
        if (rows * columns == 1) {
            TakeRate(name, array);
            return;
        }
        const bool isTransposed = columns > rows && rows <= MostMatlabChannels;
        const std::size_t frames = isTransposed ? columns : rows;
        const std::size_t channels = isTransposed ? rows : columns;
        const std::string note = "Left out: " + QuotedExcerpt(path + name) + ", which has " +
                                 std::to_string(rows) + " by " + std::to_string(columns) +
                                 " values.";
        if (channels > MostMatlabChannels || (m_about.frames && *m_about.frames > frames)) {
            m_about.notes.push_back(note);
            return;
        }
        if (m_about.frames != frames) {
            LeaveOutShorter();
        }
        m_noteOnEach.push_back(note);
        const std::string known = NameOfColumns(name, path);
        m_about.frames = m_about.mostFrames = frames;
        m_about.isComplex = m_about.isComplex || array.isComplex != 0;
        const auto* const split = static_cast<const mat_complex_split_t*>(array.data);
        const std::array<const void*, 2> parts{array.isComplex != 0 ? split->Re : array.data,
                                               array.isComplex != 0 ? split->Im : nullptr};
        const Shape shape{frames, channels, isTransposed};
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const std::string number = channels > 1 ? '.' + std::to_string(channel + 1) : "";
            for (std::size_t part = 0; part < (array.isComplex != 0 ? 2U : 1U); ++part) {
                const std::string suffix = array.isComplex == 0 ? "" : part == 0 ? ".I" : ".Q";
                AddColumn(owner, array, parts.at(part), shape, channel, known + number + suffix);
            }
        }
    }

    void LeaveOutShorter() {
        std::ranges::move(m_noteOnEach, std::back_inserter(m_about.notes));
        m_noteOnEach.clear();
        m_about.columns.clear();
        m_about.isComplex = false;
        m_streams.clear();
    }

    // A field's own name, or with its path where another field has that name.
    [[nodiscard]] std::string NameOfColumns(const std::string& name,
                                            const std::string& path) const {
        const bool isKnown = std::ranges::any_of(m_about.columns, [&](const Column& column) {
            return column.name == name || column.name.starts_with(name + '.');
        });
        return isKnown ? path + name : name;
    }

    struct Shape {
        std::size_t frames;
        std::size_t channels;
        // The values of a frame follow one another, since arrays are kept column by column.
        bool isTransposed;
    };

    void AddColumn(const MatlabArray& owner, const matvar_t& array, const void* values,
                   const Shape& shape, std::size_t channel, const std::string& name) {
        const SampleType type = TypeOfClass(array.class_type).value();
        Column column = ColumnOf(type, name);
        if (array.class_type == MAT_C_DOUBLE) {
            // What any number is kept as tells no full scale.
            column.fullScale = 0;
        }
        m_about.columns.push_back(column);
        const auto* const bytes = static_cast<const std::byte*>(values);
        const std::size_t size = type.bytes;
        if (!shape.isTransposed || shape.channels == 1) {
            m_streams.push_back(
                {SharedBytes(owner, {bytes + channel * shape.frames * size, shape.frames * size}),
                 type, 1});
            return;
        }
        auto copy = std::make_shared<std::vector<std::byte>>(shape.frames * size);
        for (std::size_t frame = 0; frame < shape.frames; ++frame) {
            std::copy_n(bytes + (frame * shape.channels + channel) * size, size,
                        copy->data() + frame * size);
        }
        m_streams.push_back({SharedBytes(copy, *copy), type, 1});
    }

    // A single number with the name of a sample rate.
    void TakeRate(const std::string& name, const matvar_t& array) {
        static constexpr std::array<std::string_view, 5> Names{"FS", "RATE", "SAMPLERATE",
                                                               "SAMPLE_RATE", "SAMPLING_RATE"};
        const SampleType type = TypeOfClass(array.class_type).value();
        if (array.isComplex != 0 || std::ranges::find(Names, UpperCase(name)) == Names.end()) {
            return;
        }
        double rate = 0;
        Decode(type, {static_cast<const std::byte*>(array.data), type.bytes}, {&rate, 1});
        rate += ZeroOf(type);
        if (!std::isfinite(rate) || rate <= 0 || m_hasSeveralRates) {
            return;
        }
        m_hasSeveralRates = m_about.sampleRate.value_or(rate) != rate;
        if (m_hasSeveralRates) {
            m_about.notes.push_back("The file tells different sample rates: none is taken.");
            m_about.sampleRate.reset();
        } else {
            m_about.sampleRate = rate;
        }
    }

    std::string m_name;
    std::unique_ptr<mat_t, int (*)(mat_t*)> m_file;
    About m_about;
    std::vector<SampleStream> m_streams;
    // For each array that was taken, in case that a longer one comes.
    std::vector<std::string> m_noteOnEach;
    bool m_hasSeveralRates = false;
};

void CheckMatlab(const Opening& opening, const std::string& path) {
    const MatlabKind kind = KindOf(opening.beginning);
    switch (kind.level) {
        case MatlabLevel::None:
            break;
        case MatlabLevel::Level4:
            CheckMatlabLevel4(opening.file, opening.size, kind.isBigEndian);
            break;
        case MatlabLevel::Level5:
            CheckMatlabLevel5(opening.file, opening.size, kind.isBigEndian);
            break;
        case MatlabLevel::Level73:
            CheckMatlabHdf(opening.file, path, opening.size);
            break;
    }
}

// Enough for any file that is whole: its values, unpacked, and a copy of them.
ReaderLimits LimitsFor(std::uint64_t fileBytes) {
    constexpr std::uint64_t UnpackedFromByte = 1032;
    constexpr std::uint64_t LibraryBytes = std::uint64_t{512} << 20U;
    constexpr std::uint64_t LibrarySeconds = 30;
    constexpr std::uint64_t BytesInSecond = std::uint64_t{1} << 20U;
    return {LibraryBytes + 2 * UnpackedFromByte * fileBytes,
            LibrarySeconds + fileBytes / BytesInSecond};
}

}  // namespace

const char* MissingToReadMatlab() noexcept {
    return nullptr;
}

std::unique_ptr<Recording> OpenMatlab(const Opening& opening) {
    const FileOnDisk onDisk(opening.file);
    const auto open = [&] {
        CheckMatlab(opening, onDisk.Path());
        return MatlabContent(opening.file.name, onDisk.Path()).Open();
    };
    // What HDF5 makes of a damaged file is not bounded by checks: it goes wrong in the first looks
    // already.
    return KindOf(opening.beginning).level == MatlabLevel::Level73
               ? OpenSeparately(LimitsFor(opening.size), open,
                                MatlabDamage(opening.file.name).Description())
               : open();
}
#else
const char* MissingToReadMatlab() noexcept {
    return "matio (package libmatio-dev; there is none for Windows)";
}

std::unique_ptr<Recording> OpenMatlab(const Opening& opening) {
    throw FileFault(opening.file.name,
                    std::string("This is a MATLAB file; reading it takes a build with ") +
                        MissingToReadMatlab() + ". Or save the values as text.");
}
#endif

}  // namespace krv::formats
