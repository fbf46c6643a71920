#include "samplehost/TelnetFilter.h"

#include <gtest/gtest.h>

#include <string>

#include "support/Bytes.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;
using Bytes = std::span<const std::uint8_t>;

const std::string IAC = "\xFF", DM = "\xF2", WILL = "\xFB", WONT = "\xFC", DO = "\xFD", DONT = "\xFE",
                  SB = "\xFA", SE = "\xF0";
const std::string BINARY = "\0"s, ECHO_ = "\1", SGA = "\3", TTYPE = "\x18", NAWS = "\x1F", ENVIRON = "\x27";
const std::string kSend = IAC + SB + TTYPE + "\1" + IAC + SE;
const std::string kSize = IAC + SB + NAWS + "\0\x50\0\x19"s + IAC + SE;

class Connection : public TelnetSink {
  public:
    void application(Bytes bytes) override { shown.append(bytes.begin(), bytes.end()); }
    void network(Bytes bytes) override { sent.append(bytes.begin(), bytes.end()); }

    void interrupted() override { shown += '|'; }

    void feed(std::string_view text) { filter.feed(bytesOf(text)); }
    void type(std::string_view text, bool crLf = false) { filter.send(bytesOf(text), crLf); }
    /// Everything sent since the last call.
    std::string takeSent() { return std::exchange(sent, {}); }

    TelnetFilter filter{{"ansi", 80, 25}, *this};
    std::string shown;
    std::string sent;
};

TEST(TelnetFilter, SeparatesAndAnswersWhateverTheBlocks) {
    const struct {
        std::string received, shown, sent;
    } cases[] = {
        {"a" + IAC + IAC + "z\r\n\r" + "\0c\0"s + IAC + "\xF1" + IAC + "\xF9", "a\xFFz\r\n\rc\0"s, ""},
        {"\033[1" + IAC + DO + SGA + "2" + IAC + IAC + "H", "\033[12\xFFH", IAC + WILL + SGA},
        {IAC + WILL + BINARY + "\r\0x"s, "\r\0x"s, IAC + DO + BINARY},
        {"\r" + IAC + "\xF1" + "\0\0y"s, "\r\0y"s, ""},
        {IAC + DO + NAWS + IAC + DO + NAWS, "", IAC + WILL + NAWS + kSize},
        {IAC + DO + TTYPE + kSend, "", IAC + WILL + TTYPE + IAC + SB + TTYPE + "\0ansi"s + IAC + SE},
        {kSend + IAC + SB + ENVIRON + "\1USER" + IAC + SE + "z", "z", ""},
        {IAC + DO + ENVIRON + IAC + WILL + NAWS + IAC + DO + ECHO_ + IAC + DONT + ENVIRON + IAC + WONT + NAWS,
         "", IAC + WONT + ENVIRON + IAC + DONT + NAWS + IAC + WONT + ECHO_},
        {IAC + WILL + SGA + IAC + WILL + SGA + IAC + WONT + SGA + IAC + WONT + SGA, "",
         IAC + DO + SGA + IAC + DONT + SGA},
        {IAC + SB + TTYPE + IAC + IAC + "\1" + IAC + DO + BINARY + "q", "q", IAC + WILL + BINARY},
    };
    for (const auto& [received, shown, sent] : cases) {
        SCOPED_TRACE(testing::PrintToString(received));
        for (std::size_t cut = 0; cut < received.size(); ++cut) {
            Connection connection;
            connection.feed(std::string_view(received).substr(0, cut));
            connection.feed(std::string_view(received).substr(cut));
            EXPECT_EQ(connection.shown, shown) << cut;
            EXPECT_EQ(connection.sent, sent) << cut;
        }
    }
}

TEST(TelnetFilter, EncodesWhatIsTypedAndKnowsWhoEchoesIt) {
    Connection connection;
    connection.type("a\xFF\r\rb\r\n");
    EXPECT_EQ(connection.takeSent(), "a\xFF\xFF\r\0\r\0b\r\n"s);
    EXPECT_FALSE(connection.filter.serverEchoes());
    connection.feed(IAC + DO + BINARY + IAC + WILL + ECHO_);
    EXPECT_TRUE(connection.filter.serverEchoes());
    connection.takeSent();
    connection.type("\r\xFF");
    connection.filter.sendBreak();
    EXPECT_EQ(connection.takeSent(), "\r\xFF\xFF\xFF\xF3");
    // The server takes each of both for a line's end.
    connection.type("a\r\n\r\nb\n\r");
    EXPECT_EQ(connection.takeSent(), "a\r\rb\n\r");
    connection.type("a\r\nb", true);
    EXPECT_EQ(connection.takeSent(), "a\r\nb");
    connection.feed(IAC + WONT + ECHO_);
    EXPECT_FALSE(connection.filter.serverEchoes());
}

TEST(TelnetFilter, LeavesOutWhatASynchDiscards) {
    const std::string mark = IAC + DM;
    const std::string flood(100'000, 'x');
    const struct {
        std::string first, told, shown, sent;  // the connection tells of urgent data after the first piece
    } cases[] = {
        {"a\033[3", "1;4" + IAC + IAC + IAC + DO + SGA + mark + "b", "a\033[3|b", IAC + WILL + SGA},
        {"a\r", "\0"s + mark + "\0b"s, "a\r|\0b"s, ""},
        {"a", mark + "b" + mark + "c", "abc", ""},
        {"a" + IAC, DM + "b", "ab", ""},
        {"a" + mark + "b", "c", "abc", ""},
        {"a", flood + flood + flood + flood + "b", "a|" + flood.substr(1) + "b", ""},
    };
    for (const auto& [first, told, shown, sent] : cases) {
        Connection connection;
        connection.feed(first);
        connection.filter.synch();
        connection.feed(told.substr(0, 1));
        for (std::size_t at = 1; at < told.size(); at += 50'000)
            connection.feed(std::string_view(told).substr(at, 50'000));
        EXPECT_TRUE(connection.shown == shown) << connection.shown.substr(0, 40);
        EXPECT_EQ(connection.sent, sent);
    }
}

TEST(TelnetFilter, TellsTheWindowsSizeWhileItIsWanted) {
    Connection connection;
    const auto resize = [&](int columns, int lines) {
        connection.filter.setWindowSize(columns, lines);
        return connection.takeSent();
    };
    EXPECT_EQ(resize(132, 43), "");
    connection.feed(IAC + DO + NAWS);
    EXPECT_EQ(connection.takeSent(), IAC + WILL + NAWS + IAC + SB + NAWS + "\0\x84\0\x2B"s + IAC + SE);
    EXPECT_EQ(resize(132, 43), "");
    EXPECT_EQ(resize(255, 256), IAC + SB + NAWS + "\0\xFF\xFF\1\0"s + IAC + SE);
    connection.feed(IAC + DONT + NAWS);
    EXPECT_EQ(connection.takeSent(), IAC + WONT + NAWS);
    EXPECT_EQ(resize(80, 25), "");
}

TEST(TelnetFilter, ComesBackFromASubnegotiationWithoutAnEnd) {
    const std::string start = IAC + SB + TTYPE;
    for (const std::string& filling : {"x"s, IAC + IAC}) {
        Connection connection;
        connection.feed(start);
        for (int i = 0; i < 5000; ++i) connection.feed(filling);
        connection.shown.clear();
        connection.feed("back");
        EXPECT_EQ(connection.shown, "back");
    }
}

}  // namespace
}  // namespace kavrelon
