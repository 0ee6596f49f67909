// FileWatch: keeps what was read from the I, Q and marker files in step with the names in the boxes
// and with the files on disk. It belongs to the dialog and works on its boxes and data.
#pragma once

#include <array>
#include <string>

#include "common/forms/Controls.h"
#include "ports/desktop/FileSystem.h"
#include "waveform/data/Channel.h"

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
    struct Watched {
        const forms::TextBox& fileName;
        forms::TextBox& count;
        Channel& channel;
        std::string countTip;
    };

    void CheckFile(const Watched& watched);
    [[nodiscard]] bool HasChanged(const Channel& channel);

    ports::FileSystem& m_files;
    std::array<Watched, 3> m_watched;
};

}  // namespace krv::waveform
