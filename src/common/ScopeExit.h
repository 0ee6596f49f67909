// ScopeExit: work to be done when a scope is left, whether it ends or an exception leaves it.
#pragma once

#include <exception>
#include <utility>

namespace krv {

// The work may fail. Its exception leaves the scope, unless another one is on its way out already:
// then that one goes on, since it says what went wrong first.
template <class Work>
class [[nodiscard]] ScopeExit {
 public:
    explicit ScopeExit(Work work) : m_work(std::move(work)) {}
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;
    // NOLINTNEXTLINE(bugprone-exception-escape,performance-noexcept-destructor): see above.
    ~ScopeExit() noexcept(false) {
        if (std::uncaught_exceptions() == m_exceptions) {
            m_work();
            return;
        }
        try {
            m_work();
        } catch (...) {
            return;
        }
    }

 private:
    Work m_work;
    const int m_exceptions = std::uncaught_exceptions();
};

}  // namespace krv
