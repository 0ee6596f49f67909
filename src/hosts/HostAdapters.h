// HostAdapters: the adapters for the office applications.
#pragma once

#include "hosts/AdapterFactory.h"
#include "hosts/HostServices.h"

namespace krv::hosts {

class HostAdapters final : public AdapterFactory {
 public:
    explicit HostAdapters(const HostServices& services) : m_services(services) {}
    std::shared_ptr<AppConnection> CreateAdapter(SavedDataCvalues kind) override;

 private:
    HostServices m_services;
};

}  // namespace krv::hosts
