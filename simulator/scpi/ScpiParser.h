// ScpiParser: takes a stream of program messages apart while it comes in.
//
//     message  = unit *(";" unit) LF           blanks and CR between tokens are read over
//     unit     = header [blank parameter *("," parameter)]
//     parameter = text | number unit | 'string' | "string" | #<n><n digits of length><length bytes>
//
// A number and its unit are one text, with one blank between where there are any.
//
// Nothing of a block is kept: its bytes go on as they come, exactly as many as declared, whatever
// they hold. After a syntax error, and after a header that the sink doesn't know, the rest of the
// message is read over, blocks in it to their declared length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "simulator/scpi/ScpiErrors.h"
#include "suite/scpi/BlockHeader.h"

namespace krv::simulator {

class ScpiParser {
 public:
    // Gets what was found, in the stream's order. Of what is read over it gets nothing but the
    // message's end.
    class Sink {
     public:
        virtual ~Sink() = default;
        // A unit begins. False: the header isn't known.
        virtual bool OnHeader(std::string_view header) = 0;
        virtual void OnText(std::string_view text) = 0;
        virtual void OnString(std::string_view text) = 0;
        virtual void OnBlockStart(std::uint32_t length) = 0;
        virtual void OnBlockData(std::span<const std::byte> bytes) = 0;
        virtual void OnBlockEnd() = 0;
        virtual void OnUnitEnd() = 0;
        // The unit that had begun, if any, will not end.
        virtual void OnSyntaxError(ScpiError error) = 0;
        virtual void OnMessageEnd() = 0;
    };

    static constexpr std::size_t MaxHeaderLength = 120;
    // Takes the longest sequence of waveforms.
    static constexpr std::size_t MaxTextLength = 8192;

    // The sink outlives the parser.
    explicit ScpiParser(Sink& sink) : m_sink(sink) {}

    void Feed(std::span<const std::byte> bytes);
    // The message under way ends here without its LF: a block in it that hasn't all come is an
    // error. Between messages nothing happens.
    void EndMessage();
    // Forgets the message under way.
    void Clear() noexcept;

 private:
    enum class State : std::uint8_t {
        UnitStart,
        Header,
        FirstParameter,
        NextParameter,
        Text,
        AfterText,
        String,
        StringQuote,
        AfterParameter,
        BlockHeader,
        BlockData,
        Skip
    };

    std::size_t TakeBlockData(std::span<const std::byte> bytes);
    void TakeCharacter(char character);
    void TakeUnitStart(char character);
    void TakeHeader(char character);
    void TakeParameterStart(char character);
    void TakeText(char character);
    void TakeAfterText(char character);
    void TakeString(char character);
    void TakeStringQuote(char character);
    void TakeAfterParameter(char character);
    void TakeBlockHeader(char character);
    void TakeSkipped(char character);

    void Append(char character, std::size_t limit, ScpiError error);
    void AppendToString(char character);
    void StartString(char quote);
    void StartBlockHeader();
    void FinishHeader();
    void FinishText();
    void FinishString();
    void StartBlock();
    void FinishBlock();
    // Ends the token under way and the unit, at ";" or at the end of the line.
    void FinishUnit();
    void FinishMessage();
    void Fail(ScpiError error);

    Sink& m_sink;
    State m_state = State::UnitStart;
    // Reading over the rest of the message.
    bool m_skipping = false;
    char m_quote = '"';
    char m_previous = ' ';
    std::string m_token;
    suite::BlockHeaderReader m_blockHeader;
    std::uint32_t m_blockLeft = 0;
};

}  // namespace krv::simulator
