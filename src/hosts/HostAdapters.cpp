#include "hosts/HostAdapters.h"

#include "hosts/AppConnectionExcel.h"
#include "hosts/AppConnectionWord.h"

namespace krv::hosts {

std::shared_ptr<AppConnection> HostAdapters::CreateAdapter(SavedDataCvalues kind) {
    switch (kind) {
        case ExcelSaved:
            return std::make_shared<AppConnectionExcel>(m_services);
        case WordSaved:
            return std::make_shared<AppConnectionWord>(m_services);
        default:
            return nullptr;
    }
}

}  // namespace krv::hosts
