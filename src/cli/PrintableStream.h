// PrintableStream: the one way to the user's terminal. Names, identities and errors come from
// files, instruments and documents: a control character in one of them could move the cursor,
// change what was printed before, or type commands. It is shown as "\x1B" instead; line ends and
// tabs pass. Bytes that are no UTF-8 pass too, unless a terminal may take them for such a
// character.
#pragma once

#include <ostream>
#include <streambuf>
#include <string>

namespace krv::cli {

class PrintableBuffer final : public std::streambuf {
 public:
    // Writes to the sink, which outlives it, without a buffer of its own.
    explicit PrintableBuffer(std::ostream& sink) : m_sink(sink) {}

 protected:
    int_type overflow(int_type character) override;
    int sync() override;

 private:
    // Passes on what has come.
    void Release();

    std::ostream& m_sink;
    // The first bytes of a character of several.
    std::string m_begun;
};

class PrintableStream final : public std::ostream {
 public:
    explicit PrintableStream(std::ostream& sink)
        : std::ostream(nullptr), m_sink(sink), m_buffer(sink) {
        rdbuf(&m_buffer);
    }

    // Lets sequences through to a terminal that shows them.
    void AllowSequences() { m_allowsSequences = true; }
    // A control sequence of krv's own.
    void WriteSequence(const char* sequence) {
        if (m_allowsSequences) {
            flush();
            m_sink << sequence;
        }
    }

 private:
    std::ostream& m_sink;
    PrintableBuffer m_buffer;
    bool m_allowsSequences = false;
};

}  // namespace krv::cli
