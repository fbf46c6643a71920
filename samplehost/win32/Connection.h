#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "samplehost/HostOptions.h"
#include "samplehost/RemoteSystem.h"
#include "samplehost/TelnetFilter.h"

namespace kavrelon {

/// A connection that could not be made; the text is a sentence for the user.
class ConnectionError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A remote system at the other end of a TCP connection, with telnet or without.
///
/// Telnet answers questions. From a remote system that asks for ever and reads no answer nothing more is
/// taken while too many of them wait, so that the memory they need stays bounded. Urgent data comes in its
/// place among the rest, as telnet wants it.
class Connection final : public RemoteSystem, private TelnetSink {
  public:
    /// Connects to the host and port of the options, trying every address that the name has. Returns when the
    /// connection is made. Throws ConnectionError. While nobody answers, `goOn` is asked several times a
    /// second whether to wait any longer.
    explicit Connection(
        const HostOptions& options, const std::function<bool()>& goOn = [] { return true; });
    ~Connection() override;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Signalled when `advance` has something to do. This object keeps it.
    HANDLE readyEvent() const { return event_; }

    void advance(std::chrono::milliseconds elapsed, RemoteOutput& received) override;
    /// Without telnet a line's end is that of the Enter key, a carriage return.
    void send(std::string_view text, bool crLf) override;
    /// Only telnet has a break signal; without it nothing is sent.
    void sendBreak() override;
    void resize(int columns, int rows) override;
    std::optional<SessionEnd> ending() const override { return ending_; }

  private:
    /// How many bytes may wait to be sent while more are received, beside those that the user has sent.
    static constexpr std::size_t kMostQueued = 64 * 1024;

    /// Keeps the system's socket library started.
    struct SocketLibrary {
        SocketLibrary();
        ~SocketLibrary() { WSACleanup(); }
        SocketLibrary(const SocketLibrary&) = delete;
        SocketLibrary& operator=(const SocketLibrary&) = delete;
    };

    void application(std::span<const std::uint8_t> bytes) override;
    void network(std::span<const std::uint8_t> bytes) override;
    void interrupted() override { arrived_.addInterruption(); }

    void connectTo(const HostOptions& options, const std::function<bool()>& goOn);
    int tryAddress(const addrinfo& address, const std::function<bool()>& goOn);
    void closeSocket();
    bool mayReceive() const { return queued_.size() <= kMostQueued + ofTheUser_; }
    bool urgentWaits() const;
    void receiveSome();
    void sendQueued();
    void echo(std::string_view text);
    void lose(int error);

    SocketLibrary library_;
    std::string peer_;
    SOCKET socket_ = INVALID_SOCKET;
    WSAEVENT event_ = WSA_INVALID_EVENT;
    std::optional<TelnetFilter> telnet_;
    RemoteOutput arrived_;
    std::string queued_;
    std::size_t ofTheUser_ = 0;  // at most so much of what is queued; a server that waits for it may be read
    std::optional<SessionEnd> ending_;
};

}  // namespace kavrelon
