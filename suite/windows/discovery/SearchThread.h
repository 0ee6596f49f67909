// SearchThread: looks for instruments on a thread of its own, and posts a message to a window when
// it is done. For the window's thread, which never waits for a search.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "suite/discovery/InstrumentSearch.h"

namespace krv::suite {

class SearchThread {
 public:
    // Is asked on the search's thread where to look.
    using Addresses = std::function<std::vector<std::string>()>;

    SearchThread() = default;
    SearchThread(const SearchThread&) = delete;
    SearchThread& operator=(const SearchThread&) = delete;
    ~SearchThread() { Abandon(); }

    // A search under way is left to itself: it ends soon, and its message may still come.
    void Start(Addresses addresses, HWND window, UINT message);
    // What this search has found, once; nothing as long as it isn't done.
    [[nodiscard]] std::optional<std::vector<FoundInstrument>> TakeResult();

 private:
    class Search;
    void Abandon() noexcept;

    std::shared_ptr<Search> m_search;
};

}  // namespace krv::suite
