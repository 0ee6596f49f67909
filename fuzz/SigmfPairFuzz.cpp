// The reader of SigMF pairs. What stands in front of the first NUL is the description, what stands
// behind it are the samples; without one there are none.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/RecordingFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::uint8_t* const end = data + size;
    const std::uint8_t* const nul = std::find(data, end, 0);
    krv::tests::MemoryFiles files;
    files.Put("data.sigmf-meta", std::string(data, nul));
    if (nul != end) {
        files.Put("data.sigmf-data", std::string(nul + 1, end));
    }
    krv::fuzz::ReadRecording({files, "data.sigmf-meta"}, krv::formats::OpenSigmf);
    return 0;
}
