// SharedBar: whose connected look the host's command bar shows. The adapters of a thread share one
// bar, and with it this: each belongs to a workbook or document of its own.
#pragma once

namespace krv::hosts {

class AppConnection;

class SharedBar {
 public:
    void ShowsConnected(const AppConnection& adapter) noexcept { m_connected = &adapter; }
    void ShowsUnconnected() noexcept { m_connected = nullptr; }
    // The adapter ends. Where the bar still shows its connection, it counts as showing none.
    void Forget(const AppConnection& adapter) noexcept {
        m_connected = m_connected == &adapter ? nullptr : m_connected;
    }
    [[nodiscard]] bool ShowsAnother(const AppConnection& adapter) const noexcept {
        return m_connected != nullptr && m_connected != &adapter;
    }

 private:
    // Only compared.
    const AppConnection* m_connected = nullptr;
};

}  // namespace krv::hosts
