// ScopeExit: does something when the scope is left, whichever way: `const ScopeExit idle([&] {
// SetBusy(false); });`. The work must not throw; what can fail belongs into an error trap.
#pragma once

#include <utility>

namespace krv {

template <class Work>
class [[nodiscard]] ScopeExit {
 public:
    explicit ScopeExit(Work work) : m_work(std::move(work)) {}
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;
    ~ScopeExit() { m_work(); }

 private:
    Work m_work;
};

}  // namespace krv
