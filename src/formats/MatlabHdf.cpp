// MATLAB files of level 7.3: HDF5 files of datasets, of groups that are structures, and of
// references to what cells and arrays of structures hold.
#include "formats/MatlabChecks.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "formats/Fault.h"

#ifdef KRV_HAS_HDF5
#define H5_USE_110_API
#include <hdf5.h>

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "common/Text.h"
#endif

namespace krv::formats {

#ifdef KRV_HAS_HDF5
namespace {

// What deflate can make of a byte.
constexpr std::uint64_t LargestHdfRatio = 1032;

// An object of the library, which is closed with this.
class HdfHandle {
 public:
    HdfHandle(hid_t id, herr_t (*close)(hid_t)) : m_id(id), m_close(close) {}
    HdfHandle(const HdfHandle&) = delete;
    HdfHandle& operator=(const HdfHandle&) = delete;
    ~HdfHandle() {
        if (m_id >= 0) {
            m_close(m_id);
        }
    }
    [[nodiscard]] hid_t Get() const noexcept { return m_id; }

 private:
    hid_t m_id;
    herr_t (*m_close)(hid_t);
};

// Numbers as computers keep them. The library trusts types of other makings too far.
bool IsNumber(hid_t type) {
    const hid_t numbers[] = {H5T_IEEE_F32LE, H5T_IEEE_F32BE, H5T_IEEE_F64LE, H5T_IEEE_F64BE,
                             H5T_STD_I8LE,   H5T_STD_I8BE,   H5T_STD_I16LE,  H5T_STD_I16BE,
                             H5T_STD_I32LE,  H5T_STD_I32BE,  H5T_STD_I64LE,  H5T_STD_I64BE,
                             H5T_STD_U8LE,   H5T_STD_U8BE,   H5T_STD_U16LE,  H5T_STD_U16BE,
                             H5T_STD_U32LE,  H5T_STD_U32BE,  H5T_STD_U64LE,  H5T_STD_U64BE};
    return std::ranges::any_of(numbers, [&](hid_t each) { return H5Tequal(type, each) > 0; });
}

// A real number beside an imaginary one.
bool IsComplexNumber(hid_t type) {
    if (H5Tget_class(type) != H5T_COMPOUND || H5Tget_nmembers(type) != 2) {
        return false;
    }
    const HdfHandle real(H5Tget_member_type(type, 0), H5Tclose);
    const HdfHandle imaginary(H5Tget_member_type(type, 1), H5Tclose);
    const std::size_t bytes = H5Tget_size(real.Get());
    return IsNumber(real.Get()) && H5Tequal(real.Get(), imaginary.Get()) > 0 &&
           H5Tget_member_offset(type, 0) == 0 && H5Tget_member_offset(type, 1) == bytes &&
           H5Tget_size(type) == 2 * bytes;
}

struct HdfLink {
    std::string name;
    bool isHard = false;
};

// Goes the way that the reader goes: through groups, and through references in datasets.
class HdfCheck {
 public:
    HdfCheck(const std::string& name, const std::string& path, std::uint64_t fileBytes)
        : m_name(name),
          m_fileBytes(fileBytes),
          m_file(H5Fopen(path.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), H5Fclose) {}

    void Run() {
        if (m_file.Get() < 0) {
            throw MatlabDamage(m_name);
        }
        for (const HdfLink& link : LinksOf(m_file.Get())) {
            // What cells refer to, and what objects are made of.
            if (link.name != "#refs#" && link.name != "#subsystem#") {
                CheckLink(m_file.Get(), link, link.name, 0);
            }
        }
    }

 private:
    static herr_t Collect(hid_t, const char* name, const H5L_info_t* info, void* links) {
        auto& list = *static_cast<std::vector<HdfLink>*>(links);
        list.push_back({name, info->type == H5L_TYPE_HARD});
        return list.size() > MostMatlabMembers ? -1 : 0;
    }

    [[nodiscard]] std::vector<HdfLink> LinksOf(hid_t group) const {
        std::vector<HdfLink> links;
        if (H5Literate(group, H5_INDEX_NAME, H5_ITER_NATIVE, nullptr, &Collect, &links) < 0) {
            throw FileFault(m_name, "A list of its variables or fields is damaged or too long.");
        }
        return links;
    }

    void CheckLink(hid_t group, const HdfLink& link, const std::string& place, int depth) {
        if (!link.isHard) {
            throw Fault(place, "This is a link to something else, which is not followed.");
        }
        const HdfHandle object(H5Oopen(group, link.name.c_str(), H5P_DEFAULT), H5Oclose);
        CheckObject(object.Get(), place, depth);
    }

    void CheckObject(hid_t object, const std::string& place, int depth) {
        if (object < 0) {
            throw Fault(place, "It is damaged.");
        }
        if (++m_members > MostMatlabMembers || depth > MostMatlabDepth) {
            throw Fault(place,
                        "Structures and cells have too many members, or lie too deep in one "
                        "another. Save the waveform alone.");
        }
        CheckAttributes(object, place);
        if (H5Iget_type(object) == H5I_GROUP) {
            for (const HdfLink& link : LinksOf(object)) {
                CheckLink(object, link, place + '.' + link.name, depth + 1);
            }
        } else if (H5Iget_type(object) == H5I_DATASET) {
            CheckDataset(object, place, depth);
        }
    }

    void CheckAttributes(hid_t object, const std::string& place) const {
        H5O_info_t info;
        if (H5Oget_info(object, &info) < 0) {
            throw Fault(place, "It is damaged.");
        }
        for (hsize_t k = 0; k < info.num_attrs; ++k) {
            const HdfHandle attribute(H5Aopen_by_idx(object, ".", H5_INDEX_NAME, H5_ITER_NATIVE, k,
                                                     H5P_DEFAULT, H5P_DEFAULT),
                                      H5Aclose);
            if (attribute.Get() < 0 || H5Aget_storage_size(attribute.Get()) > m_fileBytes) {
                throw Fault(place, "One of its attributes is damaged.");
            }
        }
    }

    void CheckDataset(hid_t dataset, const std::string& place, int depth) {
        const HdfHandle type(H5Dget_type(dataset), H5Tclose);
        const std::uint64_t count = CountOf(dataset);
        const std::uint64_t bytes = H5Tget_size(type.Get());
        const std::uint64_t most = MostBytesOf(dataset, bytes, place);
        const bool isReference = H5Tequal(type.Get(), H5T_STD_REF_OBJ) > 0;
        if (!isReference && !IsNumber(type.Get()) && !IsComplexNumber(type.Get())) {
            throw Fault(place, "Its values are of a kind that is not read.");
        }
        if (count > most / bytes) {
            throw Fault(place, "It should have " + std::to_string(count) +
                                   " values, for which there is no data.");
        }
        if (isReference) {
            CheckReferences(dataset, count, place, depth);
        }
    }

    static std::uint64_t CountOf(hid_t dataset) {
        const HdfHandle space(H5Dget_space(dataset), H5Sclose);
        if (H5Sget_simple_extent_type(space.Get()) == H5S_NULL) {
            return 0;
        }
        std::array<hsize_t, H5S_MAX_RANK> dimensions{};
        const int rank = H5Sget_simple_extent_dims(space.Get(), dimensions.data(), nullptr);
        std::uint64_t count = 1;
        for (int k = 0; k < rank; ++k) {
            count = Times(count, dimensions.at(static_cast<std::size_t>(k)));
        }
        return count;
    }

    // How many bytes the data in the file can make.
    [[nodiscard]] std::uint64_t MostBytesOf(hid_t dataset, std::uint64_t valueBytes,
                                            const std::string& place) const {
        const HdfHandle plan(H5Dget_create_plist(dataset), H5Pclose);
        const H5D_layout_t layout = H5Pget_layout(plan.Get());
        if (layout == H5D_VIRTUAL || H5Pget_external_count(plan.Get()) != 0) {
            throw Fault(place, "Its data is in another file, which is not read.");
        }
        const std::uint64_t stored =
            std::min<std::uint64_t>(H5Dget_storage_size(dataset), m_fileBytes);
        if (layout != H5D_CHUNKED) {
            return stored;
        }
        const std::uint64_t most =
            HasPacking(plan.Get(), place) ? Times(stored, LargestHdfRatio) : stored;
        std::array<hsize_t, H5S_MAX_RANK> dimensions{};
        const int rank = H5Pget_chunk(plan.Get(), H5S_MAX_RANK, dimensions.data());
        std::uint64_t chunk = valueBytes;
        for (int k = 0; k < rank; ++k) {
            chunk = Times(chunk, dimensions.at(static_cast<std::size_t>(k)));
        }
        if (chunk > most) {
            throw Fault(place, "It is kept in pieces of " + std::to_string(chunk) +
                                   " bytes, for which there is no data.");
        }
        return most;
    }

    // Packings that tell their own size could tell any.
    [[nodiscard]] bool HasPacking(hid_t plan, const std::string& place) const {
        bool isPacked = false;
        for (int k = 0; k < H5Pget_nfilters(plan); ++k) {
            unsigned flags = 0;
            std::size_t values = 0;
            const H5Z_filter_t filter = H5Pget_filter2(plan, static_cast<unsigned>(k), &flags,
                                                       &values, nullptr, 0, nullptr, nullptr);
            if (filter != H5Z_FILTER_DEFLATE && filter != H5Z_FILTER_SHUFFLE &&
                filter != H5Z_FILTER_FLETCHER32) {
                throw Fault(place, "It is packed in a way that is not read.");
            }
            isPacked = isPacked || filter == H5Z_FILTER_DEFLATE;
        }
        return isPacked;
    }

    void CheckReferences(hid_t dataset, std::uint64_t count, const std::string& place, int depth) {
        if (count > MostMatlabMembers) {
            throw Fault(place, "It has too many members. Save the waveform alone.");
        }
        std::vector<hobj_ref_t> references(static_cast<std::size_t>(count));
        if (H5Dread(dataset, H5T_STD_REF_OBJ, H5S_ALL, H5S_ALL, H5P_DEFAULT, references.data()) <
            0) {
            throw Fault(place, "It is damaged.");
        }
        for (const hobj_ref_t& reference : references) {
            const HdfHandle object(H5Rdereference2(dataset, H5P_DEFAULT, H5R_OBJECT, &reference),
                                   H5Oclose);
            CheckObject(object.Get(), place, depth + 1);
        }
    }

    static std::uint64_t Times(std::uint64_t a, std::uint64_t b) {
        constexpr std::uint64_t Most = std::numeric_limits<std::uint64_t>::max();
        return b != 0 && a > Most / b ? Most : a * b;
    }

    [[nodiscard]] Error Fault(const std::string& place, const std::string& reason) const {
        return FileFault(m_name + ", " + QuotedExcerpt(place), reason);
    }

    std::string m_name;
    std::uint64_t m_fileBytes;
    HdfHandle m_file;
    std::size_t m_members = 0;
};

}  // namespace

void CheckMatlabHdf(const InputFile& file, const std::string& path, std::uint64_t fileBytes) {
    // The library would print its errors itself, here and when the file is read.
    H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    HdfCheck(file.name, path, fileBytes).Run();
}
#else
void CheckMatlabHdf(const InputFile& file, const std::string&, std::uint64_t) {
    throw FileFault(file.name,
                    "This is a MATLAB file of level 7.3; reading it takes a build with HDF5 "
                    "(package libhdf5-dev). Or save it with -v7.");
}
#endif

}  // namespace krv::formats
