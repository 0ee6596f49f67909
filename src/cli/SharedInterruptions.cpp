#include "cli/SharedInterruptions.h"

namespace krv::cli {

// Touched by a signal handler, which may be on any thread.
class SharedInterruptions::Share final : public Interruptions {
 public:
    explicit Share(SharedInterruptions& owner) : m_owner(owner) {}

    void Watch(Callback callback, void* context) override {
        m_context = context;
        m_callback = callback;
    }
    void StopWatching() override { m_callback = nullptr; }
    void Warn(const char* text) noexcept override {
        if (!m_owner.m_hasWarned.exchange(true)) {
            m_owner.m_interruptions.Warn(text);
        }
    }
    void EndProgram(int exitCode) noexcept override {
        m_owner.m_interruptions.EndProgram(exitCode);
    }
    void Press() const noexcept {
        if (const Callback callback = m_callback; callback != nullptr) {
            callback(m_context);
        }
    }

 private:
    SharedInterruptions& m_owner;
    std::atomic<Callback> m_callback{nullptr};
    std::atomic<void*> m_context{nullptr};
    static_assert(std::atomic<Callback>::is_always_lock_free &&
                  std::atomic<void*>::is_always_lock_free);
};

SharedInterruptions::SharedInterruptions(Interruptions& interruptions, std::size_t runs)
    : m_interruptions(interruptions) {
    for (std::size_t run = 0; run < runs; ++run) {
        m_shares.push_back(std::make_unique<Share>(*this));
    }
}

SharedInterruptions::~SharedInterruptions() {
    m_interruptions.StopWatching();
}

Interruptions& SharedInterruptions::For(std::size_t run) {
    return *m_shares[run];
}

void SharedInterruptions::Watch() {
    m_interruptions.Watch(
        [](void* context) noexcept {
            auto& shared = *static_cast<SharedInterruptions*>(context);
            shared.m_isPressed = true;
            for (const auto& share : shared.m_shares) {
                share->Press();
            }
        },
        this);
}

}  // namespace krv::cli
