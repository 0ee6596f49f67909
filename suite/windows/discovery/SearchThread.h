// SearchThread: looks for instruments on a thread of its own, and posts a message to a window when
// there is news. For the window's thread, which never waits for a search.
#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "suite/discovery/InstrumentSearch.h"

namespace krv::suite {

class SearchThread {
 public:
    struct News {
        std::vector<FoundInstrument> found{};
        bool isOver = false;
    };

    SearchThread() = default;
    SearchThread(const SearchThread&) = delete;
    SearchThread& operator=(const SearchThread&) = delete;
    ~SearchThread() { Abandon(); }

    // A search under way is left to itself: it ends soon, and its message may still come.
    void Start(std::vector<SearchPlace> places, HWND window, UINT message);
    // What has become known of this search since it was asked last.
    [[nodiscard]] News TakeNews();

 private:
    class Search;
    void Abandon() noexcept;

    std::shared_ptr<Search> m_search;
};

}  // namespace krv::suite
