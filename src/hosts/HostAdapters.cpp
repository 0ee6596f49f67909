#include "hosts/HostAdapters.h"

#include "hosts/AppConnectionExcel.h"
#include "hosts/AppConnectionWord.h"

namespace krv::hosts {

std::shared_ptr<AppConnection> HostAdapters::CreateAdapter(SavedDataCvalues kind) {
    if (kind == ExcelSaved) {
        return std::make_shared<AppConnectionExcel>(m_services);
    }
    return std::make_shared<AppConnectionWord>(m_services);
}

}  // namespace krv::hosts
