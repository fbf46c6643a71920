#include "samplehost/win32/Connection.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "samplehost/com/SystemMessage.h"
#include "support/Bytes.h"

namespace kavrelon {

namespace {

constexpr DWORD kConnectMilliseconds = 15000;
constexpr DWORD kLookMilliseconds = 50;
// The most to receive before the user interface gets its turn.
constexpr std::size_t kMostAtOnce = 64 * 1024;
// How much the system may hold for this program. All of it is still shown when the user interrupts a flood.
constexpr int kReceiveBuffer = 64 * 1024;

std::string reasonOf(int error) {
    switch (error) {
        case WSAECONNREFUSED:
            return "it was refused";
        case WSAETIMEDOUT:
            return "nobody answered in time";
        case WSAECANCELLED:
            return "the window was closed";
        case WSAHOST_NOT_FOUND:
        case WSANO_DATA:
            return "there is no host of that name";
        case WSAECONNRESET:
            return "the other side broke it off";
        default:
            return systemMessage(static_cast<DWORD>(error));
    }
}

using AddressList = std::unique_ptr<addrinfo, decltype(&freeaddrinfo)>;

/// Every address of the name; the list is empty when there is none, and `error` tells why.
AddressList addressesOf(const HostOptions& options, int& error) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_protocol = IPPROTO_TCP;
    addrinfo* found = nullptr;
    error = getaddrinfo(options.host.c_str(), std::to_string(options.port).c_str(), &hints, &found);
    return {found, &freeaddrinfo};
}

}  // namespace

Connection::SocketLibrary::SocketLibrary() {
    WSADATA data{};
    const int error = WSAStartup(MAKEWORD(2, 2), &data);
    if (error != 0) throw ConnectionError("The system's sockets cannot be used: " + reasonOf(error) + '.');
}

Connection::Connection(const HostOptions& options, const std::function<bool()>& goOn)
    : peer_(options.host + ':' + std::to_string(options.port)) {
    if (!options.raw) {
        TelnetSettings settings;
        settings.terminalType = options.terminalType;
        if (options.columns > 0) settings.columns = options.columns;
        if (options.lines > 0) settings.lines = options.lines;
        telnet_.emplace(std::move(settings), static_cast<TelnetSink&>(*this));
    }
    connectTo(options, goOn);
}

Connection::~Connection() {
    closeSocket();
}

void Connection::connectTo(const HostOptions& options, const std::function<bool()>& goOn) {
    int error = 0;
    const AddressList addresses = addressesOf(options, error);
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
        error = tryAddress(*address, goOn);
        if (error == 0) return;
        closeSocket();
        if (error == WSAECANCELLED) break;
    }
    throw ConnectionError("There is no connection to " + peer_ + ": " + reasonOf(error) + '.');
}

int Connection::tryAddress(const addrinfo& address, const std::function<bool()>& goOn) {
    socket_ = socket(address.ai_family, address.ai_socktype, address.ai_protocol);
    event_ = WSACreateEvent();
    if (socket_ == INVALID_SOCKET || event_ == WSA_INVALID_EVENT) return WSAGetLastError();
    // A refusal of either costs some comfort only.
    const BOOL on = TRUE;
    setsockopt(socket_, SOL_SOCKET, SO_OOBINLINE, reinterpret_cast<const char*>(&on), sizeof on);
    setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, reinterpret_cast<const char*>(&kReceiveBuffer),
               sizeof kReceiveBuffer);
    // Makes the socket non-blocking as well.
    if (WSAEventSelect(socket_, event_, FD_CONNECT | FD_READ | FD_OOB | FD_WRITE | FD_CLOSE) != 0)
        return WSAGetLastError();
    if (connect(socket_, address.ai_addr, static_cast<int>(address.ai_addrlen)) == 0) return 0;
    if (WSAGetLastError() != WSAEWOULDBLOCK) return WSAGetLastError();
    const DWORD start = GetTickCount();
    while (WaitForSingleObject(event_, kLookMilliseconds) != WAIT_OBJECT_0) {
        if (!goOn()) return WSAECANCELLED;
        if (GetTickCount() - start >= kConnectMilliseconds) return WSAETIMEDOUT;
    }
    WSANETWORKEVENTS events{};
    if (WSAEnumNetworkEvents(socket_, event_, &events) != 0) return WSAGetLastError();
    // Asking has reset the event; set, it lets `advance` look for what else has happened.
    WSASetEvent(event_);
    return events.iErrorCode[FD_CONNECT_BIT];
}

void Connection::closeSocket() {
    if (socket_ != INVALID_SOCKET) closesocket(std::exchange(socket_, INVALID_SOCKET));
    if (event_ != WSA_INVALID_EVENT) WSACloseEvent(std::exchange(event_, WSA_INVALID_EVENT));
}

void Connection::advance(std::chrono::milliseconds, RemoteOutput& received) {
    if (!ending_) {
        WSANETWORKEVENTS events{};
        // Resets the event; the calls below let the system set it again when there is more to do.
        WSAEnumNetworkEvents(socket_, event_, &events);
        // Systems differ: with urgent data inline some tell of it by this event, others when they are asked.
        if (telnet_ && (events.lNetworkEvents & FD_OOB) != 0) telnet_->synch();
        sendQueued();
        receiveSome();
        const bool held = !mayReceive();
        sendQueued();
        // The system tells of what has arrived only once, until some of it is taken. Otherwise the room in
        // the queue is what it tells of next.
        if (held && mayReceive()) WSASetEvent(event_);
    }
    received.append(std::exchange(arrived_, {}));
}

void Connection::send(std::string_view text, bool crLf) {
    if (ending_) return;
    const std::size_t before = queued_.size();
    if (telnet_) {
        telnet_->send(bytesOf(text), crLf);
        if (!telnet_->serverEchoes()) echo(text);
    } else {
        for (const char character : text) {
            const bool ended = character == '\n' && queued_.size() > before && queued_.back() == '\r';
            if (crLf || !ended) queued_ += character;
        }
    }
    ofTheUser_ += queued_.size() - before;
    sendQueued();
}

void Connection::sendBreak() {
    if (ending_ || !telnet_) return;
    telnet_->sendBreak();
    sendQueued();
}

void Connection::resize(int columns, int rows) {
    if (ending_ || !telnet_) return;
    telnet_->setWindowSize(std::clamp(columns, 1, 65535), std::clamp(rows, 1, 65535));
    sendQueued();
}

void Connection::application(std::span<const std::uint8_t> bytes) {
    arrived_.bytes() += textOf(bytes);
}

void Connection::network(std::span<const std::uint8_t> bytes) {
    queued_ += textOf(bytes);
}

void Connection::receiveSome() {
    std::array<char, 4096> buffer{};
    for (std::size_t taken = 0; taken < kMostAtOnce && !ending_ && mayReceive();) {
        if (telnet_ && urgentWaits()) telnet_->synch();
        const int count = recv(socket_, buffer.data(), static_cast<int>(buffer.size()), 0);
        if (count < 0) {
            if (WSAGetLastError() != WSAEWOULDBLOCK) lose(WSAGetLastError());
            return;
        }
        if (count == 0) {
            ending_ = SessionEnd{"The server has closed the connection.", false};
            return;
        }
        taken += static_cast<std::size_t>(count);
        const auto bytes = bytesOf({buffer.data(), static_cast<std::size_t>(count)});
        if (telnet_) {
            telnet_->feed(bytes);
        } else {
            application(bytes);
        }
    }
}

void Connection::sendQueued() {
    while (!queued_.empty() && !ending_) {
        const int count = ::send(socket_, queued_.data(), static_cast<int>(queued_.size()), 0);
        if (count < 0) {
            if (WSAGetLastError() != WSAEWOULDBLOCK) lose(WSAGetLastError());
            return;
        }
        queued_.erase(0, static_cast<std::size_t>(count));
    }
    ofTheUser_ = std::min(ofTheUser_, queued_.size());
}

/// Whether urgent data is yet to be read. There is a Synch only while some is.
bool Connection::urgentWaits() const {
    u_long none = 1;
    return ioctlsocket(socket_, SIOCATMARK, &none) == 0 && none == 0;
}

/// A line feed that the text has itself is not another one.
void Connection::echo(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        arrived_.bytes() += text[i];
        const bool alone = i + 1 == text.size() || text[i + 1] != '\n';
        if (text[i] == '\r' && alone) arrived_.bytes() += '\n';
    }
    // The echo is fetched with the next `advance`, like received text.
    WSASetEvent(event_);
}

void Connection::lose(int error) {
    ending_ = SessionEnd{"The connection to " + peer_ + " is lost: " + reasonOf(error) + '.', true};
}

}  // namespace kavrelon
