// ComAddIns: the COM add-ins that an application of the bench finds in the registry, from its start
// to its end. The user-interface thread's.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/shared/windows/ComAddIn.h"
#include "bench/shared/windows/OfficeAutomation.h"

namespace krv::bench {

class ComAddIns {
 public:
    // Reads the registry. The automation outlives this. What goes wrong is reported as text.
    ComAddIns(OfficeAutomation& automation, std::function<void(const std::string&)> report);
    ComAddIns(const ComAddIns&) = delete;
    ComAddIns& operator=(const ComAddIns&) = delete;
    ~ComAddIns() { ShutDown(); }

    // Connects those that are to be loaded at the start.
    void ConnectAtStartup();
    void TellStartupComplete();
    // Tells the connected ones, and disconnects them. The application still answers them.
    void ShutDown();

    [[nodiscard]] bool HasConnected() const;
    [[nodiscard]] const std::vector<std::shared_ptr<ComAddIn>>& All() const { return m_all; }

 private:
    [[nodiscard]] OfficeAutomation::Object ObjectOf(const std::shared_ptr<ComAddIn>& addIn) const;

    OfficeAutomation& m_automation;
    std::function<void(const std::string&)> m_report;
    std::vector<std::shared_ptr<ComAddIn>> m_all;
};

}  // namespace krv::bench
