// ErrorQueue: the instrument's noted errors, oldest first.
//
// It has a fixed size. An error that doesn't fit replaces the newest entry by "Queue overflow";
// then errors are lost until an entry has been read.
#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "simulator/scpi/ScpiErrors.h"

namespace krv::simulator {

struct QueuedError {
    int number = 0;
    std::string text = "No error";
};

class ErrorQueue {
 public:
    static constexpr std::size_t Capacity = 30;

    // False when there was no room and the error is lost.
    bool Add(QueuedError error);
    // Removes the oldest error and returns it; number 0 and "No error" when there is none.
    QueuedError Take();
    // Of a queue that isn't empty.
    [[nodiscard]] const QueuedError& Oldest() const { return m_errors.front(); }
    void Clear() noexcept { m_errors.clear(); }
    [[nodiscard]] std::size_t Count() const noexcept { return m_errors.size(); }

 private:
    std::deque<QueuedError> m_errors;
};

}  // namespace krv::simulator
