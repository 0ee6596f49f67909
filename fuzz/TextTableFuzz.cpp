// The reader of tables as text.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/RecordingFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    krv::fuzz::ReadRecording("data.csv", std::string(data, data + size), krv::formats::OpenTable);
    return 0;
}
