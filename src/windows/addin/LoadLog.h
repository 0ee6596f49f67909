// The add-in's log, in which a user finds why it isn't there: the file KRVAddIn.log in the folder
// Tallyport of the user's local application data. Nothing is written while all goes well.
#pragma once

#include <filesystem>
#include <string>

namespace krv::windows {

// Empty when the user has no such folder.
[[nodiscard]] std::filesystem::path LogFile();
// Adds a line with time, host and word size. A file that has grown large begins anew, and the old
// one stays beside it with the ending ".old". Throws nothing.
void WriteToLog(const std::string& text) noexcept;

}  // namespace krv::windows
