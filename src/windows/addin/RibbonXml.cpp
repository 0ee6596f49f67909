#include "windows/addin/RibbonXml.h"

#include "windows/addin/Commands.h"

namespace krv::windows {
namespace {

std::string ButtonXml(const Command& command) {
    return std::string("<button id=\"") + command.ribbonId + "\" tag=\"" + command.caption +
           "\" size=\"large\" keytip=\"" + command.keyTip +
           "\" getLabel=\"GetLabel\" getScreentip=\"GetLabel\" getSupertip=\"GetSupertip\" "
           "getEnabled=\"GetEnabled\" getVisible=\"GetVisible\" getImage=\"GetImage\" "
           "onAction=\"OnCommand\"/>";
}

}  // namespace

std::string RibbonXml(bool isForVersion14) {
    std::string xml = "<customUI xmlns=\"http://schemas.microsoft.com/office/";
    xml += isForVersion14 ? "2009/07" : "2006/01";
    xml +=
        "/customui\" onLoad=\"OnRibbonLoad\"><ribbon><tabs>"
        "<tab id=\"KRVTab\" label=\"TQL/KRV\" keytip=\"KR\">";
    bool isInGroup = false;
    for (const Command& command : Commands) {
        if (command.group != nullptr) {
            xml += isInGroup ? "</group>" : "";
            xml += std::string("<group id=\"KRVGroup") + command.group + "\" label=\"" +
                   command.group + "\">";
            isInGroup = true;
        }
        xml += ButtonXml(command);
    }
    return xml + "</group></tab></tabs></ribbon></customUI>";
}

}  // namespace krv::windows
