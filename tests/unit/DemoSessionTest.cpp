#include "samplehost/DemoSession.h"

#include <gmock/gmock.h>

#include "samplehost/EscapeRecognizer.h"
#include "samplehost/PlaySession.h"
#include "samplehost/TerminalSink.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

/// The demo session on a terminal, with the host's own work between them.
class DemoTest : public ConnectedTest, private TerminalSink {
  protected:
    DemoTest() : TerminalSink(*terminal) { pass(milliseconds{0}); }

    /// Lets time pass, a tick at a time as the host does.
    void pass(milliseconds time) {
        constexpr milliseconds kTick{20};
        for (milliseconds passed{0}; passed <= time; passed += kTick) {
            std::string bytes;
            demo.advance(passed.count() == 0 ? milliseconds{0} : kTick, bytes);
            recognizer.feed({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
        }
    }
    void press(std::string_view keys) {
        for (const char key : keys) demo.send(std::string(1, key));
        pass(milliseconds{0});
    }
    std::string screenText() const {
        std::string text;
        for (const std::string& row : shownRows()) text += row + '\n';
        return text;
    }

    void sequence(std::int16_t index, std::span<const std::string_view> fields) override {
        TerminalSink::sequence(index, fields);
        if (terminal->IClientEscTree_EscTreeDesc(index) != "Size Screen") return;
        demo.resize(std::stoi(std::string(fields[0])), std::stoi(std::string(fields[1])));
    }

    DemoSession demo;
    /// Sequences that the terminal does not have, or that it refused.
    int faults = 0;

  private:
    static EscapeTree treeOf(const clsTerminal& terminal) {
        std::vector<std::string> patterns;
        for (std::int16_t row = 1; row <= kEscapeRows; ++row) {
            patterns.push_back(terminal.IClientEscTree_EscTreeString(row));
        }
        return EscapeTree(patterns);
    }

    void unmatched(std::span<const std::uint8_t>) override { ++faults; }
    void failed(const RuntimeError&) override { ++faults; }

    EscapeRecognizer recognizer{treeOf(*terminal), *this};
};

bool isOneOf(char character, std::string_view set) {
    return set.find(character) != std::string_view::npos;
}

/// How many frames the screen shows that are closed on all four sides; crossings may stand on them.
int closedFrames(const std::vector<std::string>& rows) {
    int closed = 0;
    const auto at = [&](std::size_t x, std::size_t y) {
        return y < rows.size() && x < rows[y].size() ? rows[y][x] : '\0';
    };
    for (std::size_t top = 0; top < rows.size(); ++top) {
        for (std::size_t left = 0; left < rows[top].size(); ++left) {
            if (!isOneOf(at(left, top), "\xDA\xC9")) continue;
            std::size_t bottom = top + 1;
            while (isOneOf(at(left, bottom), "\xB3\xC3\xBA")) ++bottom;
            if (bottom == top + 1 || !isOneOf(at(left, bottom), "\xC0\xC8")) continue;
            std::size_t right = left + 1;
            while (isOneOf(at(right, bottom), "\xC4\xC1\xCD")) ++right;
            bool sound = isOneOf(at(right, bottom), "\xD9\xBC") && isOneOf(at(right, top), "\xBF\xBB");
            for (std::size_t y = top + 1; y < bottom; ++y)
                sound = sound && isOneOf(at(right, y), "\xB3\xB4\xBA");
            closed += sound ? 1 : 0;
        }
    }
    return closed;
}

TEST_F(DemoTest, EveryPageStandsOnTheScreen) {
    struct Page {
        std::string_view keys;
        std::string_view shows;
        int frames;
    };
    constexpr Page kPages[]{
        {"", "Log off", 1},       {"1", "underline", 0},           {"2", "frames", 3},
        {"3", "Quantity", 1},     {"4", "Night run", 0},           {"5", "80 columns", 0},
        {"6", "first screen", 1}, {"6\r", "Any key closes it", 1},
    };
    for (const Page& page : kPages) {
        SCOPED_TRACE(page.keys);
        press("\x1B\x1B");
        press(page.keys);
        EXPECT_THAT(screenText(), HasSubstr(page.shows));
        EXPECT_EQ(closedFrames(shownRows()), page.frames);
    }
    EXPECT_EQ(faults, 0);
}

TEST_F(DemoTest, WalksThroughAllPagesUntilTheFirstKey) {
    std::vector<int> visited;
    std::size_t mostWindows = 0;
    int widest = 0;
    for (int second = 0; second < 240 && (visited.size() < 8 || demo.currentPage() >= 0); ++second) {
        pass(milliseconds{1000});
        if (demo.currentPage() >= 0 && (visited.empty() || visited.back() != demo.currentPage())) {
            visited.push_back(demo.currentPage());
        }
        mostWindows = std::max(mostWindows, platform.openWindows());
        widest = std::max<int>(widest, screen().CharsPerLine());
    }
    EXPECT_EQ(visited, (std::vector<int>{0, 1, 2, 3, 4, 5, 0, 1}));
    EXPECT_EQ(mostWindows, 2U);
    EXPECT_EQ(widest, 132);
    EXPECT_EQ(platform.openWindows(), 1U);
    EXPECT_EQ(screen().CharsPerLine(), 80);
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(parent->calls, std::vector<std::string>{"command INIT"});

    press("3");
    pass(milliseconds{60000});
    EXPECT_EQ(demo.currentPage(), 2);
    EXPECT_THAT(screenText(), Not(HasSubstr("Florence"))) << "the form fills itself in over the user's head";
}

TEST_F(DemoTest, KeysSteer) {
    struct Way {
        std::string_view keys;
        int page;
        int highlighted;
    };
    constexpr Way kWays[]{
        {"\n\n", -1, 2},                                                                 // down
        {"\x1A", -1, 6},                                                                 // up, over the top
        {"\n\n\n\n\n\n\n", -1, 0}, {"\n\r", 1, 1},    {"4", 3, 3}, {"4\x06\x06", 5, 5},  // right
        {"1\x15", 5, 5},                                                                 // left, around
        {"5\x1B", -1, 4},          {"9x\x05", -1, 0},
    };
    for (const Way& way : kWays) {
        SCOPED_TRACE(testing::PrintToString(way.keys));
        DemoSession fresh;
        std::string bytes;
        fresh.advance(milliseconds{0}, bytes);
        for (const char key : way.keys) fresh.send(std::string(1, key));
        EXPECT_EQ(fresh.currentPage(), way.page);
        EXPECT_EQ(fresh.highlighted(), way.highlighted);
    }
}

TEST_F(DemoTest, MenuTellsWhatFunctionKeysSendInsteadOfObeying) {
    demo.send("/MSG1\r");
    pass(milliseconds{0});
    EXPECT_EQ(demo.currentPage(), -1);
    EXPECT_THAT(screenText(), HasSubstr("Received /MSG1<13>"));
}

TEST_F(DemoTest, FormTakesWhatIsTyped) {
    press("3Ann\bna\r9 Quay");
    EXPECT_EQ(shownRows()[7].substr(22, 30), "Anna" + std::string(26, ' '));
    EXPECT_EQ(shownRows()[9].substr(22, 30), "9 Quay" + std::string(24, ' '));
    EXPECT_EQ(cursor(), (Point{28, 9}));

    press("\x1A" + std::string(60, 'x'));
    EXPECT_EQ(shownRows()[7].substr(12, 50), "Name      Anna" + std::string(25, 'x') + std::string(11, ' '));
    demo.sendBreak();
    pass(milliseconds{0});
    EXPECT_THAT(screenText(), HasSubstr("Break."));
}

TEST_F(DemoTest, ScrollingOutputKeepsItsBarInTheLastRow) {
    press("4");
    pass(milliseconds{7000});
    EXPECT_THAT(shownRows().back(), HasSubstr("% \xDB\xDB"));
    EXPECT_THAT(shownRows()[0], HasSubstr("records")) << "nothing has scrolled";
    press(" ");
    const std::string paused = screenText();
    pass(milliseconds{2000});
    EXPECT_EQ(screenText(), paused);
    press(" ");
    pass(milliseconds{10000});
    EXPECT_THAT(shownRows().back(), HasSubstr("100%"));
    EXPECT_THAT(shownRows(), Contains(HasSubstr("late")));
}

TEST_F(DemoTest, PageLeavesTheScreenAsLargeAsItFoundIt) {
    sequence(35, std::vector<std::string_view>{"100", "30"});
    pass(milliseconds{0});
    EXPECT_EQ(shownRows()[12].substr(35, 1), "1") << "the menu is not in the middle";
    press("5 ");
    EXPECT_EQ(screen().CharsPerLine(), 132);
    press("\x1B");
    EXPECT_EQ(screen().CharsPerLine(), 100);
    EXPECT_EQ(screen().LinesPerPage(), 30);
}

TEST_F(DemoTest, SecondScreenGivesTheFirstBackUntouched) {
    press("6");
    const std::vector<std::string> before = shownRows();
    press("\r");
    EXPECT_EQ(platform.openWindows(), 2U);
    press("x");
    EXPECT_EQ(platform.openWindows(), 1U);
    std::vector<std::string> after = shownRows();
    EXPECT_THAT(after[16], HasSubstr("closed"));
    after[16] = before[16];
    EXPECT_EQ(after, before);
    press("\r");
    demo.sendBreak();
    pass(milliseconds{0});
    EXPECT_EQ(demo.currentPage(), -1);
    EXPECT_EQ(platform.openWindows(), 1U);
}

TEST_F(DemoTest, LoggingOffEndsIt) {
    EXPECT_FALSE(demo.ending());
    press("7");
    ASSERT_TRUE(demo.ending());
    EXPECT_FALSE(demo.ending()->failed);
    demo.send("1");
    demo.sendBreak();
    std::string bytes;
    demo.advance(milliseconds{60000}, bytes);
    EXPECT_EQ(bytes, "");
}

TEST(PlaySessionTest, KeepsItsRate) {
    PlaySession slow("0123456789", 3);
    std::string played;
    for (int tick = 0; tick < 50; ++tick) slow.advance(milliseconds{20}, played);
    EXPECT_EQ(played, "012");
    slow.advance(milliseconds{60000}, played);
    EXPECT_EQ(played, "0123456789");
    EXPECT_TRUE(slow.allPlayed());

    PlaySession fast(std::string(100000, 'x'), 0);
    played.clear();
    fast.advance(milliseconds{0}, played);
    EXPECT_EQ(played.size(), 100000U);
}

}  // namespace
}  // namespace kavrelon
