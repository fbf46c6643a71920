#pragma once

#include <bitset>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kavrelon {

/// Receives the two outputs of a telnet filter. Bytes are valid during the call only.
class TelnetSink {
  public:
    virtual ~TelnetSink() = default;

    /// Bytes of the session, for the terminal.
    virtual void application(std::span<const std::uint8_t> bytes) = 0;
    /// Bytes for the server, to be sent as they are.
    virtual void network(std::span<const std::uint8_t> bytes) = 0;
    /// Session bytes were left out here: what follows is no continuation of what came before.
    virtual void interrupted() = 0;
};

/// All that the client tells the server about itself: no environment, no location, no speed.
struct TelnetSettings {
    /// Printable ASCII.
    std::string terminalType = "ansi";
    /// 1 to 65535 each.
    int columns = 80;
    int lines = 25;
};

/// The client side of a telnet connection: separates session bytes from commands, and answers the server.
///
/// It agrees to binary transmission and suppressed go-ahead in both directions, to the server's echo, and to
/// telling terminal type and window size; it refuses everything else. It never asks for an option itself, so
/// a server without telnet never gets a command. It answers only requests that change something, so that
/// the two cannot answer each other without end.
class TelnetFilter {
  public:
    /// The sink must outlive the filter.
    TelnetFilter(TelnetSettings settings, TelnetSink& sink);

    /// Takes the next bytes from the network. Blocks may end anywhere.
    void feed(std::span<const std::uint8_t> bytes);
    /// The connection tells of urgent data, before what precedes it is fed: the server begins a Synch.
    /// Session bytes up to its Data Mark are left out, and only commands are obeyed. To be told again does no
    /// harm.
    void synch();
    /// Sends session text. A byte 255 is doubled. Outside binary mode, NUL follows a carriage return that has
    /// no line feed after it in the same text. In binary mode, where both would count as a line's end, CR LF
    /// goes out as CR, unless `crLf` asks for both.
    void send(std::span<const std::uint8_t> text, bool crLf);
    void sendBreak();
    /// Stores the window's size, 1 to 65535 each, and tells the server if it has asked for sizes.
    void setWindowSize(int columns, int lines);
    /// Whether the server echoes what is typed. Otherwise the client has to.
    bool serverEchoes() const;

  private:
    using Bytes = std::span<const std::uint8_t>;
    using OptionSet = std::bitset<256>;

    enum class State { Data, Command, Option, Subnegotiation, SubnegotiationCommand };

    void takeData(Bytes data);
    void takeCommand(std::uint8_t byte);
    void takeDataMark();
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
    std::uint8_t verb_ = 0;      // of the current negotiation
    std::uint8_t previous_ = 0;  // the last session byte
    bool synching_ = false;
    bool markCame_ = false;    // before the connection told of it
    std::size_t leftOut_ = 0;  // session bytes since it told
    OptionSet ours_;           // options that are on: at our end,
    OptionSet servers_;        // and at the server's
    std::vector<std::uint8_t> subnegotiation_;
};

}  // namespace kavrelon
