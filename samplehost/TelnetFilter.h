#pragma once

#include <bitset>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kavrelon {

/// The two ways out of a telnet connection's filter. Bytes are valid during the call only.
class TelnetSink {
  public:
    virtual ~TelnetSink() = default;

    /// Bytes of the session, for the terminal.
    virtual void application(std::span<const std::uint8_t> bytes) = 0;
    /// Bytes for the server, to be sent as they are.
    virtual void network(std::span<const std::uint8_t> bytes) = 0;
};

/// What the client tells of itself. Nothing else leaves it: no environment, no location, no speed.
struct TelnetSettings {
    /// Printable ASCII.
    std::string terminalType = "ansi";
    /// 1 to 65535 each.
    int columns = 80;
    int lines = 25;
};

/// The client side of a telnet connection: separates session from commands, and answers the server.
///
/// It agrees to binary transmission and suppressed go-ahead both ways, to the server's echo, and to telling
/// terminal type and window size; it refuses everything else. It never asks for anything itself, so a server
/// that speaks no telnet gets no telnet. It answers only what changes something, so no answer is answered for
/// ever.
class TelnetFilter {
  public:
    /// The sink must outlive the filter.
    TelnetFilter(TelnetSettings settings, TelnetSink& sink);

    /// Takes the next bytes from the network, cut at any place.
    void feed(std::span<const std::uint8_t> bytes);
    /// Sends session text: 255 is doubled, and outside binary mode a carriage return that has no line feed
    /// behind it in the same text is followed by NUL.
    void send(std::span<const std::uint8_t> text);
    void sendBreak();
    /// Remembers the window's size, 1 to 65535 each, and tells the server when that wanted to know it.
    void setWindowSize(int columns, int lines);
    /// Whether the server echoes what is typed. While it does not, that is the client's part.
    bool serverEchoes() const;

  private:
    using Bytes = std::span<const std::uint8_t>;
    using OptionSet = std::bitset<256>;

    enum class State { Data, Command, Option, Subnegotiation, SubnegotiationCommand };

    void takeData(Bytes data);
    void takeCommand(std::uint8_t byte);
    void takeSubnegotiation(std::uint8_t byte);
    void keepSubnegotiation(std::uint8_t byte);
    void endSubnegotiation();
    void negotiate(std::uint8_t option);
    void answer(std::uint8_t verb, std::uint8_t option);
    void sendWindowSize();
    void sendSubnegotiation(std::uint8_t option, Bytes content);

    TelnetSettings settings_;
    TelnetSink& sink_;
    State state_ = State::Data;
    std::uint8_t verb_ = 0;      // of the negotiation that is under way
    std::uint8_t previous_ = 0;  // the session byte before
    OptionSet ours_;             // options that are on at our side
    OptionSet servers_;          // and at the server's
    std::vector<std::uint8_t> subnegotiation_;
};

}  // namespace kavrelon
