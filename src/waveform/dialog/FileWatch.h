// FileWatch: keeps what was read from the I, Q and marker files in step with the names in the boxes
// and with the files on disk. It belongs to the dialog and works on its boxes and data.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "common/forms/Controls.h"
#include "common/memory/SampleBuffer.h"
#include "ports/desktop/FileSystem.h"

namespace krv::waveform {

class frmDataTransfer;

class FileWatch {
 public:
    // The count boxes must have their tool tips by now; they get them back after an error.
    explicit FileWatch(frmDataTransfer& dialog);

    // Forgets the data of each file whose name or date has changed since it was read, and marks
    // names without a file in the count boxes.
    void Check();
    // Forgets the data of all three files and gives its memory back.
    void ForgetAll();

 private:
    struct Channel {
        const forms::TextBox& fileName;
        forms::TextBox& count;
        SampleBuffer<double>& values;
        std::int32_t& numPoints;
        bool& loaded;
        const ports::FileTime& date;
        std::string countTip;
        std::string seenName;
    };

    void CheckChannel(Channel& channel);
    [[nodiscard]] bool HasChanged(const Channel& channel, const std::string& name);
    static void Forget(Channel& channel);

    ports::FileSystem& m_files;
    std::array<Channel, 3> m_channels;
};

}  // namespace krv::waveform
