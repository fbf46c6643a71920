#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace kavrelon {

struct CloseObject {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseObject>;

inline void require(bool done, const char* otherwise) {
    if (!done) throw std::runtime_error(otherwise);
}

/// The sample host as a child process, whose standard output and error are read from one pipe. The destructor
/// ends it if it still runs.
class HostRun {
  public:
    static constexpr DWORD kPatience = 30000;

    /// What the program's standard output and error are: the pipe, or nothing.
    enum class Streams : bool { None, Pipe };

    explicit HostRun(const std::string& arguments, Streams streams = Streams::Pipe) {
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        HANDLE reading = nullptr;
        HANDLE writing = nullptr;
        require(CreatePipe(&reading, &writing, &inherited, 0), "no pipe");
        output_.reset(reading);
        const Handle input(writing);
        SetHandleInformation(reading, HANDLE_FLAG_INHERIT, 0);

        STARTUPINFOA start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        if (streams == Streams::Pipe) start.hStdOutput = start.hStdError = writing;
        PROCESS_INFORMATION started{};
        std::string command = '"' + nextToThisProgram("samplehost.exe") + "\" " + arguments;
        require(CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                               &started),
                "samplehost.exe was not started");
        CloseHandle(started.hThread);
        process_.reset(started.hProcess);
    }
    ~HostRun() { TerminateProcess(process_.get(), 99); }

    /// The exit status, or -1 when the program does not end in time.
    int exitStatus() const {
        if (WaitForSingleObject(process_.get(), kPatience) != WAIT_OBJECT_0) return -1;
        DWORD status = 0;
        GetExitCodeProcess(process_.get(), &status);
        return static_cast<int>(status);
    }

    /// The output of the program, which must have ended. Does not wait for the end of the pipe: a service
    /// that the system started for the program may still hold it.
    std::string printed() const {
        std::string text;
        DWORD waiting = 0;
        PeekNamedPipe(output_.get(), nullptr, 0, nullptr, &waiting, nullptr);
        text.resize(waiting);
        if (waiting > 0) ReadFile(output_.get(), text.data(), waiting, &waiting, nullptr);
        return text;
    }

    static std::string nextToThisProgram(const std::string& name) {
        std::array<char, MAX_PATH> path{};
        GetModuleFileNameA(nullptr, path.data(), MAX_PATH);
        const std::string program = path.data();
        return program.substr(0, program.rfind('\\') + 1) + name;
    }

  private:
    Handle output_;
    Handle process_;
};

/// The other end of a connection: accepts one on a free port of this machine. No wait is endless.
class TinyServer {
  public:
    TinyServer() {
        WSADATA data{};
        WSAStartup(MAKEWORD(2, 2), &data);
        listener_ = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        require(bind(listener_, any, size) == 0 && listen(listener_, 1) == 0 &&
                    getsockname(listener_, any, &size) == 0,
                "no port to listen on");
        port_ = ntohs(address.sin_port);
    }
    ~TinyServer() {
        hangUp();
        closesocket(listener_);
        WSACleanup();
    }
    TinyServer(const TinyServer&) = delete;
    TinyServer& operator=(const TinyServer&) = delete;

    /// Connections that fill the queue of those to be accepted.
    class Crowd {
      public:
        explicit Crowd(const TinyServer& server) {
            sockaddr_in address{};
            address.sin_family = AF_INET;
            address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
            address.sin_port = htons(server.port());
            for (SOCKET& one : sockets_) {
                one = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
                u_long nonBlocking = 1;
                ioctlsocket(one, FIONBIO, &nonBlocking);
                // It is answered later, or never.
                static_cast<void>(connect(one, reinterpret_cast<sockaddr*>(&address), sizeof address));
            }
        }
        ~Crowd() {
            for (const SOCKET one : sockets_) closesocket(one);
        }
        Crowd(const Crowd&) = delete;
        Crowd& operator=(const Crowd&) = delete;

      private:
        std::array<SOCKET, 4> sockets_{};
    };

    unsigned short port() const { return port_; }
    std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
    void hangUp() { closesocket(std::exchange(client_, INVALID_SOCKET)); }

    void accept() {
        require(readable(listener_), "nobody connects");
        client_ = ::accept(listener_, nullptr, nullptr);
    }
    void send(std::string_view bytes) { ::send(client_, bytes.data(), static_cast<int>(bytes.size()), 0); }

    /// The last of the bytes is the urgent one.
    void sendUrgent(std::string_view bytes) {
        ::send(client_, bytes.data(), static_cast<int>(bytes.size()), MSG_OOB);
    }

    /// Sends as much as the connection takes without waiting, and tells how much; -1 when it has ended.
    int flood(std::string_view bytes) {
        doNotWait();
        return countOf(::send(client_, bytes.data(), static_cast<int>(bytes.size()), 0));
    }
    /// Takes what has arrived, without waiting or keeping it, and tells how much; -1 when the connection has
    /// ended.
    int drain() {
        doNotWait();
        std::array<char, 65536> piece{};
        return countOf(recv(client_, piece.data(), static_cast<int>(piece.size()), 0));
    }

    /// Waits until `expected` is among the bytes received so far.
    bool receives(std::string_view expected) {
        std::array<char, 1024> piece{};
        while (received_.find(expected) == std::string::npos) {
            if (!readable(client_)) return false;
            const int count = recv(client_, piece.data(), static_cast<int>(piece.size()), 0);
            if (count <= 0) return false;
            received_.append(piece.data(), static_cast<std::size_t>(count));
        }
        return true;
    }

  private:
    void doNotWait() {
        u_long nonBlocking = 1;
        ioctlsocket(client_, FIONBIO, &nonBlocking);
    }
    static int countOf(int result) { return result < 0 && WSAGetLastError() == WSAEWOULDBLOCK ? 0 : result; }
    static bool readable(SOCKET socket) {
        fd_set set{};
        FD_SET(socket, &set);
        timeval patience{10, 0};
        return select(0, &set, nullptr, nullptr, &patience) == 1;
    }

    SOCKET listener_ = INVALID_SOCKET;
    SOCKET client_ = INVALID_SOCKET;
    unsigned short port_ = 0;
    std::string received_;
};

}  // namespace kavrelon
