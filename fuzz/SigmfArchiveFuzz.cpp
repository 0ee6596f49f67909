// The reader of SigMF archives: tar headers, descriptions in JSON.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/RecordingFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    krv::fuzz::ReadRecording("data.sigmf", std::string(data, data + size),
                             krv::formats::OpenSigmfArchive);
    return 0;
}
