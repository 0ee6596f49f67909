// Components: what the product registers, and where its setup program puts the libraries.
#pragma once

#include <array>
#include <span>
#include <string>

#include "ports/suite/ProgIds.h"

namespace krv::doctor {

struct Component {
    const char* title;
    const char* file;
    std::span<const char* const> progIds;
};

inline constexpr const char* AddInProgId = "KRVAddIn.Connect";

inline constexpr std::array ControlProgIds{ports::ProgId::KRVControl};
inline constexpr std::array SuiteProgIds{ports::ProgId::KRVServer,   ports::ProgId::Discovery,
                                         ports::ProgId::IOSettings,  ports::ProgId::RS232Config,
                                         ports::ProgId::VCUtilities, ports::ProgId::InstrumentState,
                                         ports::ProgId::StateInfo};
inline constexpr std::array AddInProgIds{AddInProgId};

inline constexpr std::array Components{
    Component{"toolbar control", "KRVControl.dll", ControlProgIds},
    Component{"suite components", "KRVSuite.dll", SuiteProgIds},
    Component{"Office add-in", "KRVAddIn.dll", AddInProgIds}};

// Beside krv.
[[nodiscard]] inline std::string LibraryFolder(int wordSize) {
    return wordSize == 64 ? "x64" : "x86";
}

}  // namespace krv::doctor
