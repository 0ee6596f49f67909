#include "hosts/HostAdapters.h"

#include "hosts/AppConnectionExcel.h"

namespace krv {

std::shared_ptr<AppConnection> HostAdapters::CreateAdapter(SavedDataCvalues kind) {
    if (kind == ExcelSaved) {
        return std::make_shared<AppConnectionExcel>(m_services);
    }
    return nullptr;
}

}  // namespace krv
