// ImportReport: what reports and tables of figures tell of an import.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "formats/Import.h"

namespace krv::cli {

struct ImportReport {
    std::string format;
    std::size_t points = 0;
    std::optional<double> sampleRate;
    double fullScale = 1;
    double peak = 0;
    std::vector<std::string> done;
    std::vector<std::string> warnings;
};

[[nodiscard]] ImportReport ReportOf(const formats::ImportedWaveform& waveform);
[[nodiscard]] nlohmann::ordered_json ImportJson(const ImportReport& report);

}  // namespace krv::cli
