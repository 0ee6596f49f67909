#include "simulator/scpi/ErrorQueue.h"

#include <algorithm>
#include <utility>

namespace krv::simulator {
namespace {

// The length that the standard gives an entry of the queue.
constexpr std::size_t MaxTextLength = 255;

// An entry becomes a part of a reply, which is one line of ASCII.
void MakePrintable(std::string& text) {
    text.resize(std::min(text.size(), MaxTextLength));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
}

}  // namespace

bool ErrorQueue::Add(QueuedError error) {
    if (m_errors.size() < Capacity) {
        MakePrintable(error.text);
        m_errors.push_back(std::move(error));
        return true;
    }
    m_errors.back() = {static_cast<int>(ScpiError::QueueOverflow),
                       std::string(ScpiErrorText(ScpiError::QueueOverflow))};
    return false;
}

QueuedError ErrorQueue::Take() {
    if (m_errors.empty()) {
        return {};
    }
    QueuedError oldest = std::move(m_errors.front());
    m_errors.pop_front();
    return oldest;
}

}  // namespace krv::simulator
