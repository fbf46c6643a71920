#include "samplehost/demo/DemoSession.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iomanip>
#include <optional>
#include <sstream>

#include "samplehost/PlaySession.h"
#include "samplehost/SessionRecording.h"
#include "support/Bytes.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// The demo session and a terminal, with a host's work between them.
class DemoTest : public ConnectedTest, private TerminalSink {
  protected:
    DemoTest() : TerminalSink(*terminal) {
        platform.pictureFiles.emplace("/nowhere/Pictures/harbour.png", HeadlessPicture('H', false));
        pass(milliseconds{0});
    }

    /// Lets time pass, a tick at a time as the host does.
    void pass(milliseconds time) {
        constexpr milliseconds kTick{20};
        for (milliseconds passed{0}; passed <= time; passed += kTick) {
            RemoteOutput output;
            demo.advance(passed.count() == 0 ? milliseconds{0} : kTick, output);
            while (!output.empty()) {
                recognizer.feed(bytesOf(output.takeBytes(100)));
                bool processed = false;
                if (const auto command = output.takeCommand()) form().ProcessCmd(*command, processed);
            }
        }
    }
    void press(std::string_view keys) {
        for (const char key : keys) demo.send(std::string(1, key), false);
        pass(milliseconds{0});
    }
    /// What is not drawn in cells, and the rows that are not blank, each with its text in the terminal's code
    /// page and with the places where its attributes change.
    std::string screenText() const {
        std::ostringstream text;
        text << "cursor " << cursor().x << ',' << cursor().y << ", " << screen().pictures().all().size()
             << " pictures" << (form().CutOk() ? ", copying" : "") << (form().PasteOk() ? ", pasting" : "")
             << '\n';
        const auto rows = storedRows();
        for (int row = 0; row < screen().LinesPerPage(); ++row) {
            std::string line = rows[static_cast<std::size_t>(row)];
            line.erase(line.find_last_not_of(" .") + 1);
            if (line.empty()) continue;
            text << std::setw(2) << row << ' ' << line << " |";
            std::optional<CellAttr> before;
            for (int column = 0; column < screen().CharsPerLine(); ++column) {
                const CellAttr now = attr(column, row);
                if (std::exchange(before, now) == now) continue;
                text << ' ' << column << ':' << int{now.Fore} << '/' << int{now.Back} << '/' << int{now.Mode};
            }
            text << '\n';
        }
        return text.str();
    }
    void expectShown(std::string_view text) const { EXPECT_THAT(shownRows(), Contains(HasSubstr(text))); }

    void sequence(std::int16_t index, std::span<const std::string_view> fields) override {
        TerminalSink::sequence(index, fields);
        if (terminal->IClientEscTree_EscTreeDesc(index) != "Size Screen") return;
        demo.resize(std::stoi(std::string(fields[0])), std::stoi(std::string(fields[1])));
    }

    DemoSession demo;
    /// Sequences that the terminal does not have, or that it refused.
    int faults = 0;

  private:
    void unmatched(std::span<const std::uint8_t>) override { ++faults; }
    void failed(const RuntimeError&) override { ++faults; }

    EscapeRecognizer recognizer{escapeTree(), *this};
};

TEST_F(DemoTest, EveryPageStandsOnTheScreen) {
    std::string all;
    const auto visit = [&](std::initializer_list<std::string_view> pages) {
        for (const std::string_view keys : pages) {
            press("\x1B\x1B");
            press(keys);
            all += "keys " + testing::PrintToString(keys) + '\n' + screenText();
        }
    };
    visit({"", "1", "2", "3", "4", "5", "6", "6\r", "7\r\r\rhello", "8", "9\x01paste"});
    // What is typed into the form, pictures that come and go, and what is forbidden on its page only.
    visit({"3Ann\bna\r9 Quay", "3Ann\r9 Quay\x1A-a name that is far too long for it"});
    visit({"8\r\r\x04", "8\x04\x04", "8\r\x1B", "8\0338\r", "8\r\x06"});
    visit({"9\x01\x05\x01", "9\x01\x05\x1B"});
    // Down, up, Enter, right and left, also around the ends, and keys that the menu does not have.
    visit({"\n\n", "\x1A", "\n\r", "4\x06\x06", "1\x15", "5\x1B", "x\x05"});
    std::ostringstream golden;
    golden << std::ifstream("tests/golden/demo/pages.expected", std::ios::binary).rdbuf();
    const std::string path = testing::TempDir() + "pages.expected";
    if (golden.str() != all) std::ofstream(path, std::ios::binary) << all;
    EXPECT_TRUE(golden.str() == all) << "look at the pages, and keep " << path << " where they are right";
    EXPECT_EQ(faults, 0);
}

TEST_F(DemoTest, WalksThroughAllPagesUntilTheFirstKey) {
    std::vector<int> visited{-1};
    bool forbade = false;
    for (int second = 0; second < 300 && (visited.size() < 12 || demo.currentPage() >= 0); ++second) {
        pass(milliseconds{1000});
        const int page = demo.currentPage();
        if (page >= 0 && page != visited.back()) visited.push_back(page);
        forbade = forbade || !form().CutOk();
    }
    EXPECT_TRUE(forbade && form().CutOk() && form().PasteOk());
    EXPECT_THAT(visited, ElementsAre(-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 0, 1));
    EXPECT_EQ(platform.openWindows(), 1U);
    EXPECT_EQ(screen().CharsPerLine(), 80);
    EXPECT_EQ(faults, 0);
    EXPECT_THAT(parent->calls, ElementsAre("command INIT"));

    press("3");
    pass(milliseconds{60000});
    EXPECT_EQ(demo.currentPage(), 2);
    EXPECT_THAT(shownRows(), Not(Contains(HasSubstr("Florence")))) << "the form fills itself in unasked";
}

TEST_F(DemoTest, MenuTellsWhatFunctionKeysSendUntilLoggedOff) {
    demo.send("/MSG1\r", false);
    pass(milliseconds{0});
    EXPECT_EQ(demo.currentPage(), -1);
    expectShown("Received /MSG1<13>");
    EXPECT_FALSE(demo.ending());
    press("0");
    ASSERT_TRUE(demo.ending());
    EXPECT_FALSE(demo.ending()->failed);
    press("1");
    EXPECT_EQ(demo.currentPage(), -1);
}

TEST_F(DemoTest, ScrollingOutputKeepsItsBarInTheLastRow) {
    press("4");
    pass(milliseconds{7000});
    EXPECT_THAT(shownRows().back(), HasSubstr("% \xDB\xDB"));
    EXPECT_THAT(shownRows()[0], HasSubstr("records")) << "nothing has scrolled";
    press(" ");
    const auto paused = shownRows();
    pass(milliseconds{2000});
    EXPECT_EQ(shownRows(), paused);
    press(" ");
    pass(milliseconds{10000});
    EXPECT_THAT(shownRows().back(), HasSubstr("100%"));
    press(
        "\x1B"
        "4 \x1B"
        "4");
    pass(milliseconds{7000});
    EXPECT_THAT(shownRows().back(), HasSubstr("% \xDB\xDB")) << "a page that was left while it stood still";
}

TEST_F(DemoTest, PageLeavesTheScreenAsLargeAsItFoundIt) {
    sequence(rows::kSizeScreen, std::vector<std::string_view>{"100", "30"});
    pass(milliseconds{0});
    EXPECT_EQ(shownRows()[11].substr(35, 1), "1") << "the menu is not in the middle";
    press("5 ");
    EXPECT_EQ(screen().CharsPerLine(), 132);
    press("\x1B");
    EXPECT_EQ(screen().CharsPerLine(), 100);
    EXPECT_EQ(screen().LinesPerPage(), 30);
}

TEST_F(DemoTest, SecondScreenGivesTheFirstBackUntouched) {
    press("6");
    auto before = shownRows();
    press("\r");
    EXPECT_EQ(platform.openWindows(), 2U);
    press("x");
    EXPECT_EQ(platform.openWindows(), 1U);
    before[16] = shownRows()[16];
    EXPECT_THAT(before[16], HasSubstr("closed"));
    EXPECT_EQ(shownRows(), before);
    press("\r");
    demo.sendBreak();
    pass(milliseconds{0});
    EXPECT_EQ(platform.openWindows(), 1U);
    expectShown("Break.");
}

TEST_F(DemoTest, APasteIsShownAsOnePiece) {
    press("9");
    demo.send("a\r\n\tb", false);
    pass(milliseconds{0});
    expectShown("Received    a<13><10><9>b ");
}

TEST(PlaySessionTest, KeepsItsRate) {
    PlaySession slow("0123456789", 3);
    RemoteOutput played;
    for (int tick = 0; tick < 50; ++tick) slow.advance(milliseconds{20}, played);
    EXPECT_EQ(played.bytes(), "012");
    EXPECT_FALSE(slow.ending());
    slow.advance(milliseconds{60000}, played);
    EXPECT_EQ(played.bytes(), "0123456789");
    EXPECT_TRUE(slow.ending() && !slow.ending()->failed);
    PlaySession(std::string(100000, 'x'), 0).advance(milliseconds{0}, played);
    EXPECT_EQ(played.bytes().size(), 100010U) << "without a rate everything comes at once";
}

TEST(PlaySessionTest, KeepsThePaceOfARecording) {
    using namespace std::string_literals;
    std::ostringstream file;
    const SessionRecorder::Clock::time_point start{};
    SessionRecorder recorder(file, start);
    recorder.received("3 1\na\0"s, start + milliseconds(40));
    recorder.received("\xFF\n", start + milliseconds(1500));
    const auto after = [](const std::string& recording, int rate, int time) {
        PlaySession play(recording, rate);
        RemoteOutput played;
        play.advance(milliseconds{time}, played);
        return played.bytes();
    };
    const std::string whole = file.str();
    EXPECT_EQ(after(whole, 0, 39), "");
    EXPECT_EQ(after(whole, 0, 1499), "3 1\na\0"s);
    EXPECT_EQ(after(whole, 0, 1500), "3 1\na\0\xFF\n"s);
    EXPECT_EQ(after(whole, 1000, 2), "3 ") << "a rate comes first";
    for (std::size_t cut = 1; cut < whole.size() - 20; ++cut) {
        const std::string rest = after(whole.substr(0, whole.size() - cut), 0, 9999);
        EXPECT_TRUE("3 1\na\0\xFF\n"s.starts_with(rest)) << "cut short by " << cut << ": " << rest;
    }
}

}  // namespace
}  // namespace kavrelon
