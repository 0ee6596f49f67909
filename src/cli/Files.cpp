#include "cli/Files.h"

#include <algorithm>
#include <bit>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Platform.h"
#include "common/Error.h"

namespace krv::cli {

bool AreSameFile(const std::string& left, const std::string& right) {
    std::error_code failure;
    if (std::filesystem::equivalent(PathOf(left), PathOf(right), failure)) {
        return true;
    }
    const auto place = [&failure](const std::string& file) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(PathOf(file), failure),
                                                 failure);
    };
    return !left.empty() && !right.empty() && AreSameName(place(left), place(right));
}

// The other file of a SigMF pair, which is read with the one that was named; empty for other files.
static std::string OtherOfPair(const std::string& file) {
    constexpr std::string_view Meta = ".sigmf-meta";
    constexpr std::string_view Data = ".sigmf-data";
    for (const auto& [ending, other] : {std::pair{Meta, Data}, {Data, Meta}}) {
        if (file.ends_with(ending)) {
            return file.substr(0, file.size() - ending.size()) + std::string(other);
        }
    }
    return {};
}

void RequireOtherFiles(const NamedFile& written, std::span<const NamedFile> others) {
    if (written.file == "-") {
        throw UsageError(written.name +
                         " takes a file, and - stands for standard input. Name a file; " +
                         "one that is called so is ./-.");
    }
    for (const NamedFile& other : others) {
        if (AreSameFile(written.file, other.file) ||
            AreSameFile(written.file, OtherOfPair(other.file))) {
            throw UsageError(written.name + " would overwrite " + other.file + ", which " +
                             other.name + " names, too. Name another place.");
        }
    }
}

void MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(PathOf(folder), error);
    if (!std::filesystem::is_directory(PathOf(folder))) {
        throw Error(ErrorNumber::PathFileAccess,
                    "Can't make the folder " + folder + ": " +
                        (error ? error.message() : std::string("A file has its name.")));
    }
}

static void Require(const char* what, const std::string& file, const std::error_code& failure) {
    if (failure) {
        throw Error(ErrorNumber::PathFileAccess,
                    std::string(what) + file + ": " + failure.message());
    }
}

void WriteWhole(const std::string& file, std::span<const std::byte> bytes) {
    Require("Can't write ", file, WriteWholeFile(PathOf(file), bytes));
}

void WriteWhole(const std::string& file, const FileWriter& write) {
    Require("Can't write ", file, WriteWholeFile(PathOf(file), write));
}

void RemoveFile(const std::string& file) {
    Require("Can't remove ", file, RemoveRegularFile(PathOf(file)));
}

void WriteText(const std::string& file, std::string_view text) {
    WriteWhole(file, std::as_bytes(std::span(text)));
}

void WriteCodes(const std::string& file, std::span<const std::int16_t> codes) {
    if constexpr (std::endian::native == std::endian::little) {
        WriteWhole(file, std::as_bytes(codes));
        return;
    }
    std::vector<std::int16_t> swapped(codes.size());
    std::transform(codes.begin(), codes.end(), swapped.begin(), [](std::int16_t code) {
        const auto bits = static_cast<std::uint16_t>(code);
        return static_cast<std::int16_t>(static_cast<std::uint16_t>(bits << 8 | bits >> 8));
    });
    WriteWhole(file, std::as_bytes(std::span(std::as_const(swapped))));
}

}  // namespace krv::cli
