// SearchThread: looks for instruments on a thread of its own, and posts a message to a window when
// it is done. For the window's thread.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "suite/discovery/InstrumentSearch.h"

namespace krv::suite {

class SearchThread {
 public:
    SearchThread() = default;
    SearchThread(const SearchThread&) = delete;
    SearchThread& operator=(const SearchThread&) = delete;
    // Ends the search, which takes at most as long as one address takes to answer.
    ~SearchThread();

    // A search under way is ended first. The message is posted when this one is done.
    void Start(std::vector<std::string> addresses, HWND window, UINT message);
    // Once the message has come: what was found.
    [[nodiscard]] std::vector<suite::FoundInstrument> TakeResult();

 private:
    void Stop();

    std::thread m_thread;
    std::atomic<bool> m_cancelled = false;
    std::vector<suite::FoundInstrument> m_found;
};

}  // namespace krv::suite
