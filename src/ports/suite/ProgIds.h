// The names by which the suite's components and the toolbar control are created. Components are
// reached by them alone, so that any implementation that conforms will do.
#pragma once

namespace krv::ports::ProgId {

inline constexpr const char* KRVServer = "CvnKRVServer.CvnKRVServer";
inline constexpr const char* Discovery = "CvnDiscovery.CvnDiscoveryCtl";
inline constexpr const char* IOSettings = "CvnDiscovery.IOSettings";
inline constexpr const char* RS232Config = "CvnRS232.RS232Config";
inline constexpr const char* VCUtilities = "CvnInstrUtilities.VCUtilities";
inline constexpr const char* InstrumentState = "CvnInstrSetups.InstrumentState";
inline constexpr const char* StateInfo = "CvnInstrSetups.StateInfo";

inline constexpr const char* KRVControl = "CvnKRVControl.KRVControl";

}  // namespace krv::ports::ProgId
