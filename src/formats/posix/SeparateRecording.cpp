#include "formats/SeparateRecording.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "common/Error.h"
#include "formats/ByteStreams.h"

namespace krv::formats {
namespace {

using Bytes = std::vector<std::byte>;

// What is sent comes in parts, each behind its head.
enum class PartKind : std::uint64_t { Description, Values, Error, NoMemory };

struct PartHead {
    PartKind kind = PartKind::NoMemory;
    // Of a description or an error its bytes; of values their number, which is 0 behind the last.
    std::uint64_t size = 0;
};

constexpr std::uint64_t MostTextBytes = std::uint64_t{16} << 20U;
constexpr std::size_t ValuesInPart = std::size_t{1} << 15U;

void SendPart(const ReaderProcess::Send& send, PartKind kind, std::size_t size,
              std::span<const std::byte> bytes) {
    const PartHead head{kind, size};
    send(std::as_bytes(std::span(&head, 1)));
    send(bytes);
}

// A description or an error as bytes: numbers have eight, and texts stand behind their length.
class Packer {
 public:
    void Pass(std::uint64_t number) {
        const auto bytes = std::as_bytes(std::span(&number, 1));
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }
    void Pass(double number) { Pass(std::bit_cast<std::uint64_t>(number)); }
    void Pass(bool flag) { Pass(std::uint64_t{flag}); }
    void Pass(const std::string& text) {
        Pass(std::uint64_t{text.size()});
        const auto bytes = std::as_bytes(std::span(text));
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }
    template <class Value>
    void Pass(const std::optional<Value>& value) {
        Pass(value.has_value());
        Pass(value.value_or(Value()));
    }
    template <class Items, class PassItem>
    void PassEach(const Items& items, PassItem passItem) {
        Pass(std::uint64_t{items.size()});
        std::ranges::for_each(items, passItem);
    }
    [[nodiscard]] const Bytes& Packed() const noexcept { return m_bytes; }

 private:
    Bytes m_bytes;
};

// The same the other way.
class Unpacker {
 public:
    // The error is thrown where there is less than is asked for.
    Unpacker(Bytes bytes, const Error& damage) : m_bytes(std::move(bytes)), m_damage(damage) {}

    void Pass(std::uint64_t& number) {
        std::ranges::copy(Next(sizeof number),
                          std::as_writable_bytes(std::span(&number, 1)).begin());
    }
    void Pass(double& number) {
        std::uint64_t bits = 0;
        Pass(bits);
        number = std::bit_cast<double>(bits);
    }
    void Pass(bool& flag) {
        std::uint64_t number = 0;
        Pass(number);
        flag = number != 0;
    }
    void Pass(std::string& text) {
        std::uint64_t size = 0;
        Pass(size);
        text = TextOf(Next(size));
    }
    template <class Value>
    void Pass(std::optional<Value>& value) {
        bool isThere = false;
        Pass(isThere);
        Pass(value.emplace());
        if (!isThere) {
            value.reset();
        }
    }
    template <class Items, class PassItem>
    void PassEach(Items& items, PassItem passItem) {
        std::uint64_t left = 0;
        for (Pass(left); left > 0; --left) {
            passItem(items.emplace_back());
        }
    }

 private:
    std::span<const std::byte> Next(std::uint64_t count) {
        if (count > m_bytes.size() - m_at) {
            throw m_damage;
        }
        const auto bytes = std::span(m_bytes).subspan(m_at, static_cast<std::size_t>(count));
        m_at += bytes.size();
        return bytes;
    }

    Bytes m_bytes;
    const Error& m_damage;
    std::size_t m_at = 0;
};

// What a description is made of, in its order, for both ways.
template <class Way, class Description>
void PassAbout(Way& way, Description& about) {
    way.Pass(about.format);
    way.PassEach(about.columns, [&](auto& column) {
        way.Pass(column.name);
        way.Pass(column.fullScale);
        way.Pass(column.isInteger);
        way.Pass(column.zero);
    });
    way.Pass(about.isComplex);
    way.Pass(about.sampleRate);
    way.Pass(about.frames);
    way.Pass(about.mostFrames);
    way.PassEach(about.annotations, [&](auto& annotation) {
        way.Pass(annotation.first);
        way.Pass(annotation.count);
    });
    way.Pass(about.firstFrame);
    way.PassEach(about.notes, [&](auto& note) { way.Pass(note); });
}

void SendText(const ReaderProcess::Send& send, PartKind kind, const Bytes& bytes) {
    SendPart(send, kind, bytes.size(), bytes);
}

void SendError(const ReaderProcess::Send& send, const Error& error) {
    Packer to;
    to.Pass(std::uint64_t{static_cast<std::uint32_t>(error.Number())});
    to.Pass(error.Description());
    SendText(send, PartKind::Error, to.Packed());
}

void SendRecording(const std::function<std::unique_ptr<Recording>()>& open,
                   const ReaderProcess::Send& send) {
    try {
        const std::unique_ptr<Recording> recording = open();
        Packer about;
        PassAbout(about, recording->Description());
        SendText(send, PartKind::Description, about.Packed());
        const std::size_t width = recording->Description().columns.size();
        std::vector<double> values(std::max<std::size_t>(ValuesInPart / width, 1) * width);
        std::size_t frames = 0;
        do {
            frames = recording->Read(values);
            SendPart(send, PartKind::Values, frames * width,
                     std::as_bytes(std::span(values).first(frames * width)));
        } while (frames > 0);
    } catch (const Error& error) {
        SendError(send, error);
    } catch (const std::bad_alloc&) {
        SendPart(send, PartKind::NoMemory, 0, {});
    }
}

// What comes of the other process. After a crash in the making it may say anything.
class Parts {
 public:
    Parts(const ReaderLimits& limits, const std::function<std::unique_ptr<Recording>()>& open,
          std::string descriptionOfDamage)
        : m_damage(ErrorNumber::InvalidFileFormat, std::move(descriptionOfDamage)),
          m_process(limits, [&](const ReaderProcess::Send& send) { SendRecording(open, send); }) {}

    About TakeAbout() {
        Unpacker from = TakeText(TakeHead(PartKind::Description));
        About about;
        PassAbout(from, about);
        constexpr std::uint64_t Most = std::numeric_limits<std::uint64_t>::max();
        if (about.columns.empty() || about.frames.value_or(0) > about.mostFrames ||
            about.mostFrames > Most / about.columns.size()) {
            throw m_damage;
        }
        return about;
    }

    // Returns the size of the next part, which must be of the kind; throws the error that comes
    // instead.
    std::uint64_t TakeHead(PartKind kind) {
        PartHead head;
        Take(std::as_writable_bytes(std::span(&head, 1)));
        if (head.kind == PartKind::Error) {
            Unpacker error = TakeText(head.size);
            std::uint64_t number = 0;
            std::string description;
            error.Pass(number);
            error.Pass(description);
            throw Error(static_cast<std::int32_t>(number), description);
        }
        if (head.kind == PartKind::NoMemory) {
            throw std::bad_alloc();
        }
        if (head.kind != kind) {
            throw m_damage;
        }
        return head.size;
    }

    void Take(std::span<std::byte> bytes) {
        if (!m_process.Receive(bytes)) {
            throw m_damage;
        }
    }

    [[nodiscard]] const Error& Damage() const noexcept { return m_damage; }

 private:
    Unpacker TakeText(std::uint64_t size) {
        if (size > MostTextBytes) {
            throw m_damage;
        }
        Bytes bytes(static_cast<std::size_t>(size));
        Take(bytes);
        return {std::move(bytes), m_damage};
    }

    Error m_damage;
    ReaderProcess m_process;
};

class SeparateRecording final : public Recording {
 public:
    SeparateRecording(About about, std::unique_ptr<Parts> parts)
        : Recording(std::move(about)),
          m_parts(std::move(parts)),
          m_width(Description().columns.size()),
          m_most(Description().mostFrames * m_width) {}

    std::size_t Read(std::span<double> values) override {
        std::span<double> rest = values.first(values.size() / m_width * m_width);
        const std::size_t wanted = rest.size();
        while (!rest.empty() && HasMore()) {
            const auto count =
                static_cast<std::size_t>(std::min<std::uint64_t>(m_inPart, rest.size()));
            m_parts->Take(std::as_writable_bytes(rest.first(count)));
            m_inPart -= count;
            rest = rest.subspan(count);
        }
        return (wanted - rest.size()) / m_width;
    }

 private:
    bool HasMore() {
        if (m_inPart > 0 || m_isAtEnd) {
            return !m_isAtEnd;
        }
        m_inPart = m_parts->TakeHead(PartKind::Values);
        m_isAtEnd = m_inPart == 0;
        const std::uint64_t done = m_done + m_inPart;
        const std::uint64_t told = Description().frames.value_or(0) * m_width;
        if (m_inPart > m_most - m_done || m_inPart % m_width != 0 || (m_isAtEnd && done < told)) {
            throw m_parts->Damage();
        }
        m_done = done;
        return !m_isAtEnd;
    }

    std::unique_ptr<Parts> m_parts;
    std::size_t m_width;
    // Values: no more than this, so many of them told of, and of these not read yet.
    std::uint64_t m_most;
    std::uint64_t m_done = 0;
    std::uint64_t m_inPart = 0;
    bool m_isAtEnd = false;
};

}  // namespace

std::unique_ptr<Recording> OpenSeparately(const ReaderLimits& limits,
                                          const std::function<std::unique_ptr<Recording>()>& open,
                                          const std::string& descriptionOfDamage) {
    auto parts = std::make_unique<Parts>(limits, open, descriptionOfDamage);
    About about = parts->TakeAbout();
    return std::make_unique<SeparateRecording>(std::move(about), std::move(parts));
}

}  // namespace krv::formats
