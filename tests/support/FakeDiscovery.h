// FakeDiscovery: the discovery control in the connect dialog. The test plays its user: it puts a
// session into the settings and reports the change.
#pragma once

#include <memory>
#include <utility>

#include "ports/suite/DiscoveryControl.h"
#include "tests/support/CallLog.h"

namespace krv::tests {

class FakeDiscovery final : public ports::DiscoveryControl,
                            public std::enable_shared_from_this<FakeDiscovery> {
 public:
    explicit FakeDiscovery(CallLog& log) : m_log(log) {}

    ports::DiscoveryEvents* Receiver = nullptr;

    std::shared_ptr<ports::IOSettings> Settings() override {
        m_log.Note("read settings");
        return m_settings;
    }
    void SetSettings(const std::shared_ptr<ports::IOSettings>& settings) override {
        m_log.Note("give settings");
        m_settings = settings;
    }
    std::unique_ptr<Subscription> ReceiveEvents(ports::DiscoveryEvents& receiver) override {
        Receiver = &receiver;
        return std::make_unique<Ending>(weak_from_this());
    }

 private:
    class Ending final : public Subscription {
     public:
        explicit Ending(std::weak_ptr<FakeDiscovery> control) : m_control(std::move(control)) {}
        ~Ending() override {
            if (const auto control = m_control.lock()) {
                control->Receiver = nullptr;
            }
        }

     private:
        std::weak_ptr<FakeDiscovery> m_control;
    };

    CallLog& m_log;
    std::shared_ptr<ports::IOSettings> m_settings;
};

}  // namespace krv::tests
