// The reader of NumPy's arrays.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/RecordingFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    krv::fuzz::ReadRecording("data.npy", std::string(data, data + size),
                             krv::formats::OpenNumpyArray);
    return 0;
}
