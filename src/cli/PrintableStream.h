// PrintableStream: the one way to the user's terminal. Names, identities and errors come from
// files, instruments and documents: a control character in one of them could move the cursor,
// change what was printed before, or type commands. It is shown as "\x1B" instead; line ends and
// tabs pass.
#pragma once

#include <ostream>
#include <streambuf>

namespace krv::cli {

class PrintableBuffer final : public std::streambuf {
 public:
    // Writes to the sink, which outlives it, without a buffer of its own.
    explicit PrintableBuffer(std::ostream& sink) : m_sink(sink) {}

 protected:
    int_type overflow(int_type character) override;
    int sync() override;

 private:
    bool Put(unsigned char byte);

    std::ostream& m_sink;
    // The first byte of a control character of two, or of a letter, was written last.
    bool m_isWithinPair = false;
};

class PrintableStream final : public std::ostream {
 public:
    explicit PrintableStream(std::ostream& sink) : std::ostream(nullptr), m_buffer(sink) {
        rdbuf(&m_buffer);
    }

 private:
    PrintableBuffer m_buffer;
};

}  // namespace krv::cli
