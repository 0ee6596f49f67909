// MemoryFiles: a file system in memory, with the faults that real ones have.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "common/Error.h"
#include "ports/desktop/FileSystem.h"

namespace krv::tests {

class MemoryFiles final : public ports::FileSystem {
 public:
    struct Entry {
        std::string content;
        std::int64_t date = 1;
        bool unreadable = false;
        // What FileSize returns, when it isn't the content's size: a file cut while it is open, or
        // one too large to hold in memory.
        std::int64_t reportedSize = -1;
        // The device fails once this many bytes have been read.
        std::size_t failAfter = SIZE_MAX;
    };

    std::map<std::string, Entry> Entries;
    int OpenCount = 0;

    Entry& Put(const std::string& path, std::string content, std::int64_t date = 1) {
        Entry& entry = Entries[path];
        entry = Entry{std::move(content), date};
        return entry;
    }

    bool FileExists(const std::string& path) override { return Entries.count(path) != 0; }

    std::uint64_t FileSize(const std::string& path) override {
        const Entry& entry = Find(path);
        return entry.reportedSize >= 0 ? static_cast<std::uint64_t>(entry.reportedSize)
                                       : entry.content.size();
    }

    ports::FileTime DateLastModified(const std::string& path) override { return {Find(path).date}; }

    std::unique_ptr<ports::SequentialFile> OpenToRead(const std::string& path) override {
        const Entry& entry = Find(path);
        if (entry.unreadable) {
            throw Error(ErrorNumber::PermissionDenied, "Permission denied: " + path);
        }
        ++OpenCount;
        return std::make_unique<Reader>(entry);
    }

 private:
    class Reader final : public ports::SequentialFile {
     public:
        explicit Reader(const Entry& entry) : m_entry(entry) {}
        std::size_t Read(std::span<std::byte> destination) override {
            const std::size_t left = m_entry.content.size() - m_position;
            const std::size_t count = std::min(left, destination.size());
            if (m_position + count > m_entry.failAfter) {
                throw Error(ErrorNumber::DeviceInputOutput);
            }
            if (count > 0) {
                std::memcpy(destination.data(), m_entry.content.data() + m_position, count);
            }
            m_position += count;
            return count;
        }

     private:
        const Entry& m_entry;
        std::size_t m_position = 0;
    };

    const Entry& Find(const std::string& path) const {
        const auto found = Entries.find(path);
        if (found == Entries.end()) {
            throw Error(ErrorNumber::FileNotFound, "File not found: " + path);
        }
        return found->second;
    }
};

}  // namespace krv::tests
