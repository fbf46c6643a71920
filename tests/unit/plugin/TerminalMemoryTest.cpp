#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "headless/HeadlessHelpWindow.h"
#include "tests/unit/FailingNew.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace rows;
using Texts = HeadlessSession::Texts;

/// A session whose host and user have been busy, and all that can be seen of it.
class Busy final : public Session {
  public:
    Busy() {
        for (const char letter : {'A', 'B'}) {
            platform.pictureFiles.emplace(std::string("/nowhere/Pictures/a_long_name_of_a_picture_") + letter,
                                          HeadlessPicture(letter, true));
        }
        connect();
        // No drawing takes memory from here on: a real window has its own.
        setSize(24, 32);
        begin();
    }

    /// What a host does at first; some of it fails where memory does.
    void begin() const {
        // The rows below the first size have never been written.
        setSize(20, 30);
        screen().SetCursor(0, 0);
        type("first\r\nsecond\r\nthird");
        picture("A", 1);
        sequence(kShowHelpBox, {"1", "1", "1", "10", "3", "<html>a help text that is not short"});
        screen().SetCursor(3, 2);
    }
    void picture(const std::string& name, std::int16_t number) const {
        form().DisplayPicture(number, 10, 2, 12, 3, "a_long_name_of_a_picture_" + name);
    }

    /// After the paint that follows some time.
    std::string state() const {
        form().Form_Paint();
        std::string text;
        for (const std::string& row : storedRows()) text += row;
        for (const ShownCell& cell : Session::picture()) {
            for (const std::uint32_t part : {std::uint32_t{cell.ch}, cell.pen.text, cell.pen.back})
                text += static_cast<char>(part ^ part >> 8U ^ part >> 16U);
            text += cell.picture;
        }
        const auto add = [&text](const auto&... parts) {
            ((text += '|' + testing::PrintToString(parts)), ...);
        };
        add(cursor(), attr(3, 3), screen().CharsPerLine(), screen().LinesPerPage(), terminal->FuncKey(5));
        for (const int slot : form().HelpBoxes().openSlots()) {
            const frmHelp& box = *form().HelpBoxes().at(slot);
            const HeadlessHelpWindow* const frame = windowOf(platform.desktop, box);
            add(slot, box.HelpInfo(), box.BoxTop(), frame->visible(), frame->rectangle().left);
        }
        add(platform.desktop.helpWindows.size(), platform.openWindows(), platform.desktop.clipboard);
        for (const EntryList* list : {&form().hostMenus().knowledgeBase(), &form().hostMenus().remote()}) {
            for (std::size_t i = 0; i < list->size(); ++i) add(list->target(i), list->description(i));
        }
        return text;
    }
};

TEST(TerminalMemoryTest, WhateverAllocationFailsAStepIsDoneOrNotAtAll) {
    const std::string longText(300, 'x');
    using Step = std::function<void(const Busy&)>;
    const auto sequence = [](int row, const Texts& fields = {}) -> Step {
        return [row, fields](const Busy& it) { it.sequence(row, fields); };
    };
    const struct {
        const char* name;
        Step step;
        Point cursor{3, 2};
    } steps[] = {
        {"erase screen", sequence(kClearScreen)},
        {"erase to end", sequence(kClearEndOfScreen)},
        {"erase to here", sequence(kClearBeginOfScreen), {2, 28}},
        {"erase line", sequence(kClearLine), {2, 28}},
        {"erase line's end", sequence(kClearEndOfLine), {2, 28}},
        {"erase line's start", sequence(kClearStartOfLine), {2, 28}},
        {"print", [](const Busy& it) { it.type("x"); }, {2, 28}},
        {"scroll", [](const Busy& it) { it.type("\n"); }, {2, 29}},
        {"size", sequence(kSizeScreen, {"24", "32"})},
        {"help box", sequence(kShowHelpBox, {"2", "3", "3", "9", "9", longText})},
        {"another picture", [](const Busy& it) { it.picture("B", 2); }},
        {"command",
         [](const Busy& it) {
             bool processed = false;
             it.form().ProcessCmd("IMAGE 1;1;2;2;3;a_long_name_of_a_picture_B", processed);
         }},
        {"knowledge base", sequence(kAddKB, {"http://localhost/" + longText, longText})},
        {"program", sequence(kAddRemote, {longText, longText})},
        {"function key", sequence(kSetFunctionKey, {"5", longText})},
        {"copy",
         [](const Busy& it) {
             it.form().Form_MouseDown(MouseButton::Left, {1, 1});
             it.form().Form_MouseMove(true, {300, 60});
             it.form().mnuRightClickCopy_Click();
         }},
        {"log off", sequence(kLogOff)},
    };
    for (const auto& [name, step, cursor] : steps) {
        const auto prepared = [at = cursor] {
            auto busy = std::make_unique<Busy>();
            busy->screen().SetCursor(at.x, at.y);
            return busy;
        };
        auto busy = prepared();
        const std::string before = busy->state();
        step(*busy);
        const std::string after = busy->state();
        busy = prepared();
        Outcome outcome{.failed = true};
        for (std::size_t n = 1; outcome.failed; ++n) {
            outcome = withFailure(n, [&, &step = step] { step(*busy); });
            const std::string now = busy->state();
            EXPECT_TRUE(now == before || (!outcome.raised && now == after)) << name << ", allocation " << n;
            EXPECT_TRUE(outcome.failed || now == after) << name;
            // One that a failure has left as it was is used again: nothing must gather in it.
            if (now != before) busy = prepared();
        }
    }
}

TEST(TerminalMemoryTest, WhateverAllocationFailsAHostThatBeginsAgainHasItAll) {
    const std::string whole = Busy().state();
    Outcome outcome{.failed = true};
    Busy busy;
    for (std::size_t n = 1; outcome.failed; ++n) {
        busy.terminal->IClientMain_DestroyClass();
        const auto begin = [&busy] {
            busy.connect();
            busy.begin();
        };
        outcome = withFailure(n, begin);
        begin();
        EXPECT_TRUE(busy.state() == whole) << "allocation " << n;
        EXPECT_GT(n, outcome.failed ? 0U : 50U) << "a session takes memory";
    }
}

}  // namespace
}  // namespace kavrelon
