// The reader of archives of arrays: zip directories, deflated members.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/RecordingFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    krv::fuzz::ReadRecording("data.npz", std::string(data, data + size),
                             krv::formats::OpenNumpyArchive);
    return 0;
}
