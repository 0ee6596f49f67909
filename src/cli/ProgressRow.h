// ProgressRow: where one of several runs shows how far it is.
#pragma once

#include <string>

namespace krv::cli {

class ProgressRow {
 public:
    virtual ~ProgressRow() = default;
    // On one line: e.g. " 42%" and "Sending: 12.3 of 134.2 MB, 45.6 MB/s".
    virtual void Show(const std::string& percent, const std::string& doing) = 0;
};

}  // namespace krv::cli
