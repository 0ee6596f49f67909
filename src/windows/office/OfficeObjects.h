// What all office applications have alike: command bars and add-ins, over automation.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ports/office/OfficeHost.h"
#include "windows/automation/LateBound.h"

namespace krv::windows {

// Throws Error when there is no command bar of this name.
[[nodiscard]] std::shared_ptr<ports::CommandBar> CommandBarOf(const LateBound& application,
                                                              const std::string& name);
// The entries of one of the application's collections, in its order. Each is made of the collection
// and its position, and fetches what it stands for when it is used, so that one that fails does not
// hide those before it.
template <class Port, class Entry>
[[nodiscard]] std::vector<std::shared_ptr<Port>> EntriesOf(const LateBound& application,
                                                           const wchar_t* collection) {
    const LateBound entries = application.GetObject(collection);
    const long count = entries.GetLong(L"Count");
    std::vector<std::shared_ptr<Port>> all;
    for (std::int32_t position = 1; position <= count; ++position) {
        all.push_back(std::make_shared<Entry>(entries, position));
    }
    return all;
}

// In the application's order. Where the project's own add-in is loaded, which puts the control
// there in place of the suite's, it is the last, and goes by the suite's name if the suite's isn't
// there.
[[nodiscard]] std::vector<std::shared_ptr<ports::AddIn>> AddInsOf(const LateBound& application,
                                                                  const char* suiteName);

}  // namespace krv::windows
