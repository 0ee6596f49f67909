// The sample values, codes and counts that a download dialog holds from one run to the next.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "common/memory/SampleBuffer.h"
#include "ports/desktop/FileSystem.h"
#include "ports/office/Excel.h"
#include "ports/suite/InstrumentServer.h"

namespace krv::waveform {

// Raw values as read. An array is valid while its loaded flag is set; its count is its size. For a
// model that takes interleaved data and no separate Q source, IData holds I at even positions and Q
// at odd ones.
struct WaveformData {
    SampleBuffer<double> IData;
    SampleBuffer<double> QData;
    SampleBuffer<double> MarkerData;
    std::int32_t INumPoints = 0;
    std::int32_t QNumPoints = 0;
    std::int32_t MarkerNumPoints = 0;
    ports::FileTime IFileDate;
    ports::FileTime QFileDate;
    ports::FileTime MarkerFileDate;
    bool IDataLoaded = false;
    bool QDataLoaded = false;
    bool MarkerDataLoaded = false;
    // A separate Q file or Q range is part of this download.
    bool UseQData = false;
    std::shared_ptr<ports::Range> IRange;
    std::shared_ptr<ports::Range> QRange;
    std::int32_t IRangeCount = 0;
    std::int32_t QRangeCount = 0;
};

// DAC codes ready to be sent, one array a channel. Codes of the new model family are 16-bit two's
// complement, those of the old family 14-bit offset binary (0 to 16383, 8192 is zero); marker codes
// hold four or two bits. The arrays count from 0 here and from 1 where automation sees them.
struct DacCodes {
    bool IsNewModel = false;
    SampleBuffer<std::int16_t> IDacData;
    SampleBuffer<std::int16_t> QDacData;
    SampleBuffer<std::int16_t> MarkerDacData;
    // Smallest and largest code of the I and Q arrays together; both 0 when there is no code.
    std::int16_t SmallestCode = 0;
    std::int16_t LargestCode = 0;
};

// What the last run found out, for whoever started it.
struct RunRecord {
    // How long reading and converting took, questions included; -1 while not done. Once converting
    // is done, the codes are ready.
    std::int64_t readMs = -1;
    std::int64_t convertMs = -1;
    // -1 while nothing was estimated.
    std::int32_t estimatedSeconds = -1;
    std::string destinationName;
    // Every array was written without a failing call.
    bool transferred = false;
    // How long the calls that write the arrays took; -1 while nothing was sent.
    std::int64_t transferMs = -1;
    // Whether the instrument says that it holds what was sent; nothing when it wasn't asked.
    std::optional<bool> verified;
    // What the instrument's queue held after the transfer, oldest first.
    std::vector<ports::InstrumentError> instrumentErrors;
};

}  // namespace krv::waveform
