// The wire protocol: how messages are framed, and the fixed facts both sides share. Text here is
// bytes in Windows-1252, one byte a character.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace packwise {

inline constexpr char kTerminator = '~';
inline constexpr char kFieldEnd = '|';
// What VERS tells; not a version of the program.
inline constexpr std::string_view kProtocolVersion = "1.41";
inline constexpr int kSeats = 8;
inline constexpr int kMostPacks = 6;
inline constexpr std::size_t kCommandLength = 4;
// What a client may send in one message. Servers hand on some of it with words of their own, so
// that everybody else takes a little more.
inline constexpr std::size_t kMostClientMessageLength = std::size_t{64} * 1024;
inline constexpr std::size_t kMostMessageLength = kMostClientMessageLength + 1024;

// Cuts a byte stream into messages. One splitter belongs to one connection.
class MessageSplitter {
public:
    // Takes messages of at most that many bytes, without the terminator.
    explicit MessageSplitter(std::size_t mostLength = kMostMessageLength)
        : mostLength_(mostLength) {}

    // Adds received bytes; carriage returns and line feeds vanish.
    void append(std::string_view bytes);

    // The next whole message without its terminator, in order of arrival; nothing when the rest
    // has no terminator yet.
    std::optional<std::string> next();
    bool hasNext() const { return taken_ != complete_; }

    // True once more than `mostLength` bytes have come without a terminator. The peer is then to
    // be let go; nothing more is kept of what it sends. Whole messages that came before
    // still stand to be taken.
    bool overflowed() const { return overflowed_; }

    // Forgets everything, a half message included.
    void clear();

private:
    std::size_t mostLength_;
    std::string buffer_;
    std::size_t taken_ = 0;     // bytes at the front of buffer_ already given out
    std::size_t complete_ = 0;  // bytes at the front of buffer_ up to the last terminator
    bool overflowed_ = false;
};

struct Message {
    std::string_view command;  // exactly four characters
    std::string_view body;
};

// The command and body of a message; nothing when it is shorter than a command. The views look
// into `text`.
std::optional<Message> readMessage(std::string_view text);

// A whole decimal number as std::to_string() writes it: no leading zero, no plus sign. Nothing for
// anything else or for a number outside int.
std::optional<int> readNumber(std::string_view text);

// The digit at the front of a body, 0 to 7; nothing when there is none. Used for seat indexes and
// table positions.
std::optional<int> readSeatDigit(std::string_view body);

// The fields of a body in which each field is followed by "|". What stands behind the last "|" is
// no field and is left out.
std::vector<std::string> readFields(std::string_view body);
int countFields(std::string_view body);

}  // namespace packwise
