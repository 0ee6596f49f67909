// The reader of MATLAB files, with the library behind it, which reads files of the system. Level
// 7.3 is read in a process of its own: what goes wrong there must end as an error here.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "common/files/StandardFiles.h"
#include "fuzz/RecordingFuzz.h"
#include "tests/support/TemporaryFolder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const krv::tests::TemporaryFolder folder;
    const std::filesystem::path path = folder.Path() / "data.mat";
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    krv::files::StandardFiles files;
    const krv::formats::InputFile file{files, path.string()};
    const auto beginning = krv::formats::ReadPiece(file, 0, krv::formats::BeginningBytes);
    if (krv::formats::MissingToReadMatlab() == nullptr &&
        krv::formats::IsMatlab({file, beginning, size, {}})) {
        krv::fuzz::ReadRecording(file, krv::formats::OpenMatlab);
    }
    return 0;
}
