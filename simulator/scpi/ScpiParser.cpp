#include "simulator/scpi/ScpiParser.h"

#include <algorithm>

namespace krv::simulator {
namespace {

bool IsBlank(char character) {
    return static_cast<unsigned char>(character) <= ' ';
}

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

bool IsLetter(char character) {
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
}

bool IsHeaderCharacter(char character) {
    return IsDigit(character) || IsLetter(character) || character == ':' || character == '*' ||
           character == '?' || character == '_';
}

bool StartsNumber(char character) {
    return IsDigit(character) || character == '+' || character == '-' || character == '.';
}

}  // namespace

void ScpiParser::Feed(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        std::size_t taken = 1;
        if (m_state == State::BlockData) {
            taken = TakeBlockData(bytes);
        } else {
            TakeCharacter(static_cast<char>(bytes.front()));
        }
        bytes = bytes.subspan(taken);
    }
}

void ScpiParser::EndMessage() {
    if (m_state == State::BlockData) {
        Fail(ScpiError::InvalidBlockData);
    }
    TakeCharacter('\n');
}

void ScpiParser::Clear() noexcept {
    m_state = State::UnitStart;
    m_skipping = false;
}

std::size_t ScpiParser::TakeBlockData(std::span<const std::byte> bytes) {
    const std::size_t count = std::min<std::size_t>(bytes.size(), m_blockLeft);
    if (!m_skipping) {
        m_sink.OnBlockData(bytes.first(count));
    }
    m_blockLeft -= static_cast<std::uint32_t>(count);
    if (m_blockLeft == 0) {
        FinishBlock();
    }
    return count;
}

void ScpiParser::TakeCharacter(char character) {
    if (character == '\n') {
        FinishUnit();
        FinishMessage();
        return;
    }
    switch (m_state) {
        case State::UnitStart:
            return TakeUnitStart(character);
        case State::Header:
            return TakeHeader(character);
        case State::FirstParameter:
        case State::NextParameter:
            return TakeParameterStart(character);
        case State::Text:
            return TakeText(character);
        case State::AfterText:
            return TakeAfterText(character);
        case State::String:
            return TakeString(character);
        case State::StringQuote:
            return TakeStringQuote(character);
        case State::AfterParameter:
            return TakeAfterParameter(character);
        case State::BlockHeader:
            return TakeBlockHeader(character);
        case State::BlockData:
            return;
        case State::Skip:
            return TakeSkipped(character);
    }
}

void ScpiParser::TakeUnitStart(char character) {
    if (!IsBlank(character) && character != ';') {
        m_token.clear();
        m_state = State::Header;
        TakeHeader(character);
    }
}

void ScpiParser::TakeHeader(char character) {
    if (IsHeaderCharacter(character)) {
        Append(character, MaxHeaderLength, ScpiError::ProgramMnemonicTooLong);
    } else if (IsBlank(character)) {
        FinishHeader();
    } else if (character == ';') {
        FinishUnit();
    } else {
        Fail(ScpiError::InvalidCharacter);
        TakeSkipped(character);
    }
}

void ScpiParser::TakeParameterStart(char character) {
    if (IsBlank(character)) {
        return;
    }
    if (character == ';') {
        FinishUnit();
    } else if (character == '"' || character == '\'') {
        StartString(character);
    } else if (character == '#') {
        StartBlockHeader();
    } else if (character == ',') {
        Fail(ScpiError::SyntaxError);
    } else {
        m_token.clear();
        m_state = State::Text;
        TakeText(character);
    }
}

void ScpiParser::TakeText(char character) {
    if (IsBlank(character)) {
        m_state = State::AfterText;
    } else if (character == ',') {
        FinishText();
        TakeAfterParameter(character);
    } else if (character == ';') {
        FinishUnit();
    } else if (character == '"' || character == '\'' || character == '#') {
        Fail(ScpiError::InvalidCharacter);
        TakeSkipped(character);
    } else {
        Append(character, MaxTextLength, ScpiError::TooMuchData);
    }
}

// What follows a text and a blank may be a number's unit.
void ScpiParser::TakeAfterText(char character) {
    if (IsBlank(character)) {
        return;
    }
    if (IsLetter(character) && StartsNumber(m_token.front()) &&
        m_token.find(' ') == std::string::npos) {
        m_state = State::Text;
        Append(' ', MaxTextLength, ScpiError::TooMuchData);
        TakeCharacter(character);
        return;
    }
    FinishText();
    TakeAfterParameter(character);
}

void ScpiParser::TakeString(char character) {
    if (character == m_quote) {
        m_state = State::StringQuote;
    } else {
        AppendToString(character);
    }
}

void ScpiParser::TakeStringQuote(char character) {
    if (character == m_quote) {
        m_state = State::String;
        AppendToString(character);
        return;
    }
    FinishString();
    TakeCharacter(character);
}

void ScpiParser::TakeAfterParameter(char character) {
    if (IsBlank(character)) {
        return;
    }
    if (character == ',') {
        m_state = State::NextParameter;
    } else if (character == ';') {
        FinishUnit();
    } else {
        Fail(ScpiError::InvalidSeparator);
        TakeSkipped(character);
    }
}

void ScpiParser::TakeBlockHeader(char character) {
    using Progress = suite::BlockHeaderReader::Progress;
    switch (m_blockHeader.Take(character)) {
        case Progress::Unfinished:
            return;
        case Progress::Complete:
            return StartBlock();
        case Progress::Malformed:
            Fail(ScpiError::InvalidBlockData);
            return TakeSkipped(character);
    }
}

void ScpiParser::TakeSkipped(char character) {
    const bool startsParameter = IsBlank(m_previous) || m_previous == ',';
    m_previous = character;
    if (character == '"' || character == '\'') {
        StartString(character);
    } else if (character == '#' && startsParameter) {
        StartBlockHeader();
    }
}

void ScpiParser::Append(char character, std::size_t limit, ScpiError error) {
    if (m_token.size() == limit) {
        Fail(error);
        return;
    }
    m_token += character;
}

// A string that is too long still ends at its quote: what stands in it starts no block.
void ScpiParser::AppendToString(char character) {
    if (!m_skipping) {
        Append(character, MaxTextLength, ScpiError::TooMuchData);
        m_state = State::String;
    }
}

void ScpiParser::StartString(char quote) {
    m_token.clear();
    m_quote = quote;
    m_state = State::String;
}

void ScpiParser::StartBlockHeader() {
    m_blockHeader = {};
    m_state = State::BlockHeader;
}

void ScpiParser::FinishHeader() {
    m_state = State::FirstParameter;
    if (!m_sink.OnHeader(m_token)) {
        m_skipping = true;
        m_previous = ' ';
        m_state = State::Skip;
    }
}

void ScpiParser::FinishText() {
    m_state = State::AfterParameter;
    m_sink.OnText(m_token);
}

void ScpiParser::FinishString() {
    m_state = m_skipping ? State::Skip : State::AfterParameter;
    m_previous = m_quote;
    if (!m_skipping) {
        m_sink.OnString(m_token);
    }
}

void ScpiParser::StartBlock() {
    m_blockLeft = m_blockHeader.Length();
    m_state = State::BlockData;
    if (!m_skipping) {
        m_sink.OnBlockStart(m_blockLeft);
    }
    if (m_blockLeft == 0) {
        FinishBlock();
    }
}

void ScpiParser::FinishBlock() {
    m_state = m_skipping ? State::Skip : State::AfterParameter;
    m_previous = '#';
    if (!m_skipping) {
        m_sink.OnBlockEnd();
    }
}

void ScpiParser::FinishUnit() {
    switch (m_state) {
        case State::Header:
            FinishHeader();
            break;
        case State::Text:
        case State::AfterText:
            FinishText();
            break;
        case State::StringQuote:
            FinishString();
            break;
        case State::NextParameter:
            Fail(ScpiError::MissingParameter);
            break;
        case State::String:
            Fail(ScpiError::InvalidStringData);
            break;
        case State::BlockHeader:
            Fail(ScpiError::InvalidBlockData);
            break;
        default:
            break;
    }
    if (m_skipping || m_state == State::UnitStart) {
        return;
    }
    m_state = State::UnitStart;
    m_sink.OnUnitEnd();
}

void ScpiParser::FinishMessage() {
    m_skipping = false;
    m_state = State::UnitStart;
    m_sink.OnMessageEnd();
}

void ScpiParser::Fail(ScpiError error) {
    if (!m_skipping) {
        m_sink.OnSyntaxError(error);
    }
    m_skipping = true;
    m_previous = ' ';
    m_state = State::Skip;
}

}  // namespace krv::simulator
