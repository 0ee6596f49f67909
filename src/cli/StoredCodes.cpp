#include "cli/StoredCodes.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "common/Crc32.h"
#include "common/Error.h"
#include "common/Numbers.h"
#include "common/memory/SampleBuffer.h"
#include "waveform/data/ModelFamily.h"

namespace krv::cli {
namespace {

waveform::SharedCodes FetchArray(suite::ScpiInstrument& instrument, const std::string& name,
                                 suite::StoredKind kind, const ports::StoredArray& told) {
    const auto count = static_cast<std::size_t>(told.count);
    if (count == 0) {
        return {};
    }
    SampleBuffer<std::int16_t> codes(count);
    codes.Resize(count);
    instrument.ReadCodes(name, kind, 0, codes.Span());
    if (CodesCrc32(codes.Span()) != told.crc32) {
        throw Error(ErrorNumber::DeviceInputOutput,
                    "The codes that came from the instrument aren't those that it holds.");
    }
    return waveform::SharedCodes(std::move(codes));
}

}  // namespace

waveform::DacCodes FetchCodes(suite::ScpiInstrument& instrument, const std::string& name,
                              const ports::StoredWaveform& stored) {
    const std::string model = instrument.Model();
    waveform::DacCodes codes;
    codes.isNewModel = waveform::IsNewModelName(model);
    codes.isSentInterleaved = waveform::IsSentInterleaved(model);
    codes.i = FetchArray(instrument, name, suite::StoredKind::Codes, stored.codes);
    codes.q = FetchArray(instrument, name, suite::StoredKind::QCodes, stored.qCodes);
    codes.markers = FetchArray(instrument, name, suite::StoredKind::Markers, stored.markers);
    return codes;
}

std::optional<double> SampleClockOf(suite::ScpiInstrument& instrument) {
    const ParsedNumber hertz = ParseNumber(instrument.Ask("ARBitrary:CLOCk?"), {});
    const bool isRate = hertz.error == NumberTextError::None && hertz.value > 0;
    return isRate ? std::optional(hertz.value) : std::nullopt;
}

}  // namespace krv::cli
