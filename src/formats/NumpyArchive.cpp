// Several arrays of NumPy in one archive, .npz: the longest ones make the columns.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/Text.h"
#include "formats/Counted.h"
#include "formats/Fault.h"
#include "formats/NumpyArray.h"
#include "formats/Readers.h"
#include "formats/ZipArchive.h"

namespace krv::formats {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view Ending = ".npy";
constexpr std::size_t MostMembers = 256;

struct ArchiveArray {
    std::string name;
    ZipMember member;
    NumpyArray array;
};

class NumpyArchive {
 public:
    explicit NumpyArchive(const Opening& opening) : m_file(opening.file) {
        for (const ZipMember& member : ListZipMembers(m_file, opening.size)) {
            if (std::string_view(member.name).ends_with(Ending) && m_arrays.size() < MostMembers) {
                Add(member);
            }
        }
        if (m_arrays.empty()) {
            throw m_firstFault.value_or(
                FileFault(m_file.name, "The archive holds no array with points."));
        }
        LeaveOutShorter();
    }

    std::unique_ptr<Recording> Open() {
        m_about.format = "NumPy archive, " + DescribeType(m_arrays.front().array.layout.type);
        m_about.isComplex = m_arrays.front().array.layout.isComplex;
        m_about.frames = m_about.mostFrames = m_arrays.front().array.frames;
        std::vector<SampleStream> streams;
        for (const ArchiveArray& each : m_arrays) {
            AddColumns(each);
            for (SampleStream& stream :
                 StreamsOf(each.array, [&] { return OpenZipMember(m_file, each.member); })) {
                streams.push_back(std::move(stream));
            }
        }
        return std::make_unique<SampleStreams>(m_file.name, std::move(m_about), std::move(streams));
    }

 private:
    void Add(const ZipMember& member) {
        ArchiveArray entry{member.name.substr(0, member.name.size() - Ending.size()), member, {}};
        const std::string place = m_file.name + ", " + QuotedExcerpt(entry.name);
        // What is no array of points, such as a single number, is none of the columns.
        try {
            entry.array = ReadNumpyHeader(place, *OpenZipMember(m_file, member));
        } catch (const Error& error) {
            m_firstFault = m_firstFault.value_or(error);
            m_about.notes.push_back("Left out: " + error.Description());
            return;
        }
        if (member.bytes < entry.array.headerBytes + entry.array.ValueBytes()) {
            throw FileFault(place, "The array is cut.");
        }
        m_arrays.push_back(std::move(entry));
    }

    void LeaveOutShorter() {
        const std::uint64_t most = std::ranges::max_element(m_arrays, {}, FramesOf)->array.frames;
        for (const ArchiveArray& each : m_arrays) {
            if (each.array.frames < most) {
                m_about.notes.push_back("Left out: " + QuotedExcerpt(each.name) + ", which has " +
                                        Counted(each.array.frames, "point") + '.');
            }
        }
        std::erase_if(m_arrays, [&](const ArchiveArray& each) { return each.array.frames < most; });
    }

    static std::uint64_t FramesOf(const ArchiveArray& each) { return each.array.frames; }

    void AddColumns(const ArchiveArray& each) {
        const bool isAlone = m_arrays.size() == 1;
        for (std::size_t channel = 0; channel < each.array.channels; ++channel) {
            const std::string number =
                each.array.channels > 1 ? '.' + std::to_string(channel + 1) : std::string();
            const std::string name = each.name + number;
            if (each.array.layout.isComplex) {
                AddComplexColumns(m_about.columns, each.array.layout.type,
                                  isAlone && number.empty() ? std::string() : name + '.');
            } else {
                m_about.columns.push_back(ColumnOf(each.array.layout.type, name));
            }
        }
    }

    InputFile m_file;
    std::vector<ArchiveArray> m_arrays;
    // Of what is no array that can be read.
    std::optional<Error> m_firstFault;
    About m_about;
};

}  // namespace

bool IsNumpyArchive(const Opening& opening) {
    const std::string_view text = TextOf(opening.beginning);
    if (!text.starts_with("PK\3\4"sv) || text.size() < 30) {
        return false;
    }
    const std::size_t nameBytes =
        LoadAs<std::uint16_t>(std::span(opening.beginning).subspan(26), false);
    return text.substr(30, nameBytes).ends_with(Ending);
}

std::unique_ptr<Recording> OpenNumpyArchive(const Opening& opening) {
    return NumpyArchive(opening).Open();
}

}  // namespace krv::formats
