// A flood through the sample host, from the connection to the window: how long it takes with all of it
// painted and as the host paints it, and how long the user waits meanwhile.

#include <winsock2.h>
#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr std::size_t kSmallFlood = 2'000'000;  // all of it painted, a large one takes minutes
constexpr std::size_t kLargeFlood = 20'000'000;
constexpr double kLeastRatio = 10;
constexpr double kSlowestKey = 0.1;
constexpr double kSlowestRest = 2;
constexpr int kKeys = 20;

void require(bool done, const char* otherwise) {
    if (!done) throw std::runtime_error(otherwise);
}

std::string colouredLines() {
    std::string text;
    for (int line = 0; line < 2000; ++line) {
        text += "\x1B[3" + std::to_string(line % 8) + "mthe quick brown fox jumps over the lazy dog " +
                std::to_string(100'000 + line) + "\r\n";
    }
    return text;
}

/// The sample host, with a connection to this program. It ends with the connection.
class Session {
  public:
    explicit Session(const std::string& options) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        const SOCKET listener = socket(AF_INET, SOCK_STREAM, 0);
        require(bind(listener, any, size) == 0 && listen(listener, 1) == 0 &&
                    getsockname(listener, any, &size) == 0,
                "there is no port to listen on");
        start("--raw --close-on-exit --connect 127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + ' ' +
              options);
        client_ = accept(listener, nullptr, nullptr);
        closesocket(listener);
        u_long nonBlocking = 1;
        ioctlsocket(client_, FIONBIO, &nonBlocking);
        while (!IsWindowVisible(window_)) {
            Sleep(50);
            window_ = FindWindowA("kavrelon.frmTerm", nullptr);
        }
        Sleep(1000);
    }
    ~Session() {
        closesocket(client_);
        WaitForSingleObject(process_, 60'000);
        CloseHandle(process_);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Sends what the connection takes at once, and tells how much.
    std::size_t flood(std::size_t most) {
        const std::size_t from = next_ % lines_.size();
        const int length = static_cast<int>(std::min(most, lines_.size() - from));
        const int count = send(client_, lines_.data() + from, length, 0);
        if (count < 0) {
            Sleep(1);
            return 0;
        }
        next_ += static_cast<std::size_t>(count);
        return static_cast<std::size_t>(count);
    }
    /// Seconds until the host has shown all and ended.
    double finish() {
        const auto start = Clock::now();
        shutdown(client_, SD_SEND);
        require(WaitForSingleObject(process_, 600'000) == WAIT_OBJECT_0, "the sample host does not end");
        return Seconds(Clock::now() - start).count();
    }
    /// Seconds from a key press, while the flood goes on, to its arrival here.
    double key() {
        const auto start = Clock::now();
        PostMessageA(window_, WM_CHAR, 'k', 0);
        char typed = 0;
        while (recv(client_, &typed, 1, 0) != 1) {
            flood(lines_.size());
            require(Clock::now() - start < std::chrono::seconds(30), "a key does not arrive");
        }
        return Seconds(Clock::now() - start).count();
    }

  private:
    void start(const std::string& options) {
        std::array<char, MAX_PATH> path{};
        GetModuleFileNameA(nullptr, path.data(), MAX_PATH);
        const std::string self = path.data();
        std::string command = '"' + self.substr(0, self.rfind('\\') + 1) + "samplehost.exe\" " + options;
        STARTUPINFOA how{};
        how.cb = sizeof how;
        PROCESS_INFORMATION started{};
        require(CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how,
                               &started),
                "samplehost.exe does not start");
        CloseHandle(started.hThread);
        process_ = started.hProcess;
    }

    std::string lines_ = colouredLines();
    std::size_t next_ = 0;
    HANDLE process_ = nullptr;
    SOCKET client_ = INVALID_SOCKET;
    HWND window_ = nullptr;
};

double secondsFor(std::size_t bytes, const std::string& options) {
    Session session(options);
    const auto start = Clock::now();
    for (std::size_t left = bytes; left > 0;) left -= session.flood(left);
    session.finish();
    return Seconds(Clock::now() - start).count();
}

/// The slowest of some keys in a flood, and how long the screen goes on after the last, at which the flood
/// stops.
void wait(const std::string& options, int keys, double& slowest, double& rest) {
    Session session(options);
    slowest = 0;
    for (int i = 0; i < keys; ++i) {
        const auto start = Clock::now();
        while (Clock::now() - start < std::chrono::milliseconds(200)) session.flood(65536);
        slowest = std::max(slowest, session.key());
    }
    rest = session.finish();
}

}  // namespace

int main() try {
    WSADATA data{};
    require(WSAStartup(MAKEWORD(2, 2), &data) == 0, "there are no sockets");
    const double painted = secondsFor(kSmallFlood, "--paint-all");
    const double paced = secondsFor(kSmallFlood, "");
    const double large = secondsFor(kLargeFlood, "");
    double slowest = 0;
    double rest = 0;
    wait("", kKeys, slowest, rest);
    std::printf("flood of %zu MB: painted %.2f s, as the host paints it %.2f s, ratio %.1f\n",
                kSmallFlood / 1'000'000, painted, paced, painted / paced);
    std::printf("flood of %zu MB: %.2f s, %.1f megabytes a second\n", kLargeFlood / 1'000'000, large,
                static_cast<double>(kLargeFlood) / 1e6 / large);
    std::printf("in a flood: slowest of %d keys %.3f s, rest after an interrupt %.2f s\n", kKeys, slowest,
                rest);
    return painted / paced >= kLeastRatio && slowest <= kSlowestKey && rest <= kSlowestRest ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "flood_bench: %s\n", error.what());
    return 2;
}
