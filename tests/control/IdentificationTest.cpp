#include "control/Identification.h"

#include <gtest/gtest.h>

#include <string>

namespace krv::tests {
namespace {

using namespace control;

std::string RevisionText(const std::string& revision) {
    return "The connected KRV contains firmware revision " + revision +
           ".  Tallyport has been designed to support firmware revision B.03.40 and above.  "
           "Tallyport has not been tested with, and does not support, previous revisions of "
           "firmware.";
}

std::string TQLText(const std::string& model) {
    return "The " + model +
           " is connected via a serial (RS-232) connection.  This type of connection for a "
           "TQL-family instrument is not supported by Tallyport.Toolbar functionality will not be "
           "enabled.";
}

std::string LimitedText(const std::string& model) {
    return "The " + model +
           " is connected via a serial (RS-232) connection.  This type of connection for an "
           "KRV-family instrument provides limited functionality.";
}

std::string RefusedText(const std::string& model) {
    return "Serial (RS-232) connection is not supported for " + model + ".";
}

struct Case {
    int line;
    const char* model;
    const char* revision;
    bool isSerial;
    int connectType;
    std::vector<std::string> warnings;
};

TEST(Identification, WarnsOfOldFirmwareAndSerialConnections) {
    const Case cases[] = {
        {__LINE__, "M7718C", "A.00.01", false, 3, {}},
        {__LINE__, "M771XB", "B.03.39", false, 3, {RevisionText("B.03.39")}},
        {__LINE__, "M771XB", "B.03.40", false, 3, {}},
        {__LINE__, "KRV-2B", "A.99.99", false, 3, {RevisionText("A.99.99")}},
        {__LINE__, "KRV-2B", "", false, 3, {RevisionText("")}},
        {__LINE__, "KRV2B", "A.00.01", false, 3, {}},
        {__LINE__, "M771XBx", "A.00.01", false, 3, {}},
        {__LINE__, "m771XB", "A.00.01", false, 3, {}},
        {__LINE__, "M771XB", "b.00.00", false, 3, {}},
        {__LINE__, "M9920D", "C.01.00", true, 2, {TQLText("M9920D")}},
        {__LINE__, "M7799BC", "C.01.00", true, 2, {TQLText("M7799BC")}},
        {__LINE__, "M7718C", "C.01.00", true, 1, {RefusedText("M7718C")}},
        {__LINE__, "M77CB", "C.01.00", true, 1, {RefusedText("M77CB")}},
        {__LINE__, "M771XB", "B.03.40", true, 1, {LimitedText("M771XB")}},
        {__LINE__, "M771XB", "B.03.4", true, 1, {RevisionText("B.03.4"), LimitedText("M771XB")}},
        {__LINE__, "M7718A", "A.00.01", true, 3, {RefusedText("M7718A")}},
        {__LINE__, "", "", true, 3, {RefusedText("")}},
    };
    for (const Case& test : cases) {
        const Identification found = Identify(test.model, test.revision, test.isSerial);
        EXPECT_EQ(found.connectType, test.connectType) << "line " << test.line;
        EXPECT_EQ(found.warnings, test.warnings) << "line " << test.line;
    }
}

}  // namespace
}  // namespace krv::tests
