// One array of NumPy in a file, .npy.
#include <string_view>
#include <utility>

#include "formats/Counted.h"
#include "formats/Fault.h"
#include "formats/NumpyArray.h"
#include "formats/Readers.h"

namespace krv::formats {

bool IsNumpyArray(const Opening& opening) {
    return TextOf(opening.beginning).starts_with("\x93NUMPY");
}

std::unique_ptr<Recording> OpenNumpyArray(const Opening& opening) {
    const InputFile& file = opening.file;
    const NumpyArray array = ReadNumpyHeader(file.name, *file.files.OpenToRead(file.name));
    if (opening.size < array.headerBytes + array.ValueBytes()) {
        throw ByteFault(file.name, opening.size,
                        "The file ends before its " + Counted(array.frames, "point") +
                            (array.frames == 1 ? " does." : " do."));
    }
    About about = AboutSamples("NumPy array", array.layout, array.channels);
    about.frames = about.mostFrames = array.frames;
    return std::make_unique<SampleStreams>(file.name, std::move(about), StreamsOf(array, [&] {
                                               return file.files.OpenToRead(file.name);
                                           }));
}

}  // namespace krv::formats
