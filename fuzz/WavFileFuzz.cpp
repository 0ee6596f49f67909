// The reader of WAV files.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/RecordingFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    krv::fuzz::ReadRecording("data.wav", std::string(data, data + size), krv::formats::OpenWav);
    return 0;
}
