#include "control/Identification.h"

#include "hosts/ConnectionType.h"

namespace krv::control {
namespace {

constexpr const char* OldestSupportedRevision = "B.03.40";

bool Contains(const std::string& model, const char* part) {
    return model.find(part) != std::string::npos;
}

bool IsOlderKRV(const std::string& model) {
    return (model.starts_with("M77") || model.starts_with("KRV-")) && model.ends_with('B');
}

std::string RevisionWarning(const std::string& revision) {
    return "The connected KRV contains firmware revision " + revision +
           ".  "
           "Tallyport has been designed to support firmware revision B.03.40 and "
           "above.  Tallyport has not been tested with, and does not support, "
           "previous revisions of firmware.";
}

void IdentifySerial(const std::string& model, Identification& found) {
    if (Contains(model, "99")) {
        found.connectType = hosts::ConnectionType::SerialTQL;
        found.warnings.push_back(
            "The " + model +
            " is connected via a serial (RS-232) connection.  "
            "This type of connection for a TQL-family instrument is not supported by Tallyport."
            "Toolbar functionality will not be enabled.");
    } else if (!Contains(model, "C") && Contains(model, "B")) {
        found.connectType = hosts::ConnectionType::SerialKRV;
        found.warnings.push_back(
            "The " + model +
            " is connected via a serial (RS-232) connection.  "
            "This type of connection for an KRV-family instrument provides limited "
            "functionality.");
    } else {
        if (Contains(model, "C")) {
            found.connectType = hosts::ConnectionType::SerialKRV;
        }
        found.warnings.push_back("Serial (RS-232) connection is not supported for " + model + ".");
    }
}

}  // namespace

Identification Identify(const std::string& model, const std::string& revision, bool isSerial) {
    Identification found;
    found.connectType = hosts::ConnectionType::Full;
    if (IsOlderKRV(model) && revision < OldestSupportedRevision) {
        found.warnings.push_back(RevisionWarning(revision));
    }
    if (isSerial) {
        IdentifySerial(model, found);
    }
    return found;
}

}  // namespace krv::control
