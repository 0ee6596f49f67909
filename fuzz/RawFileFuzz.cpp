// The reader of samples without a header. The first byte chooses the type that the name tells.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/RecordingFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr std::array<const char*, 6> Names{"data.cfile", "data.CF32", "data.cf64",
                                                      "data.sc16",  "data.cs8",  "data.cu8"};
    if (size > 0) {
        krv::fuzz::ReadRecording(Names.at(data[0] % Names.size()),
                                 std::string(data + 1, data + size), krv::formats::OpenRaw);
    }
    return 0;
}
