#include <tuple>

#include "headless/HeadlessHelpWindow.h"
#include "tests/unit/Session.h"

namespace kavrelon {

inline void PrintTo(const Rect& block, std::ostream* out) {
    *out << block.left << ',' << block.top << " to " << block.right << ',' << block.bottom;
}

namespace {

using buttons::kLeft;
using buttons::kRight;

Rect block(int left, int top, int width, int height) {
    return {left, top, left + width, top + height};
}

/// A terminal at (100, 50) with a box in slot 1.
class HelpBoxTest : public testing::Test, protected Session {
  protected:
    HelpBoxTest() {
        connect();
        window().moveTo({100, 50});
        show(1);
    }
    void show(int slot) { form().ShowHelpBox(static_cast<std::int16_t>(slot), 2, 3, 10, 4, "text"); }
    HeadlessHelpWindow& boxWindow(int slot = 1) {
        return *windowOf(platform.desktop, *form().HelpBoxes().at(slot));
    }
    Rect place(int slot = 1) { return boxWindow(slot).rectangle(); }
    std::shared_ptr<frmHelp> box() { return std::dynamic_pointer_cast<frmHelp>(boxWindow().events()); }
    std::size_t opened() const { return platform.headlessLauncher.shellStarts.size(); }

    void press(std::int16_t button, Point at) {
        platform.desktop.cursor = at;
        platform.desktop.heldButtons = button;
        box()->MouseDown(button, 0, 0, 0);
    }
    /// Moves the mouse: the label reports it like a release.
    void move(Point to) {
        platform.desktop.cursor = to;
        box()->MouseUp(platform.desktop.heldButtons, 0, 0, 0);
    }
    /// Over a link the label does not report the release, but the link a little later.
    void release(const char* link = nullptr) {
        const std::int16_t button = std::exchange(platform.desktop.heldButtons, 0);
        box()->dragEnded();
        link != nullptr ? box()->HyperlinkClick(link) : box()->MouseUp(button, 0, 0, 0);
    }
};

TEST_F(HelpBoxTest, TextBecomesADocument) {
    const std::pair<const char*, const char*> cases[] = {
        {"a^b", "<HTML><BODY>a<br>b</BODY></HTML>"},
        {"x < y\r\nz > &amp;", "<HTML><BODY>x&nbsp;&#060;&nbsp;y<br>z&nbsp;&#062;&nbsp;&#038;</BODY></HTML>"},
        {"<HTML>", "<HTML><BODY>&#060;HTML&#062;</BODY></HTML>"},
        {"", "<HTML><BODY></BODY></HTML>"},
        {"<html><body>a b^<b>c</b>", "<html><body>a b <b>c</b>"},
    };
    for (const auto& [text, document] : cases) {
        box()->HelpInfo(text);
        EXPECT_EQ(box()->HelpInfo(), document) << text;
    }
}

TEST_F(HelpBoxTest, ADragMovesTheOutlineAndThenTheBox) {
    const Rect start = place();
    press(kLeft, {150, 80});
    for (const Point at : {Point{151, 80}, Point{100, 200}, Point{140, 100}}) move(at);
    const Rect there = block(start.left - 10, start.top + 20, 104, 87);
    EXPECT_EQ(boxWindow().outlines(), (std::vector{there}));
    EXPECT_EQ(place(), start);
    release();
    move({300, 300});
    EXPECT_EQ(place(), there);
    form().Form_Resize();
    EXPECT_EQ(place(), there) << "the grid is where it was";

    // From there it moves with the terminal, and is shown when that is.
    form().setWindowState(WindowState::Minimised);
    window().moveTo({110, 30});
    show(2);
    EXPECT_FALSE(boxWindow(1).visible() || boxWindow(2).visible());
    form().setWindowState(WindowState::Normal);
    EXPECT_TRUE(boxWindow(1).visible() && boxWindow(2).visible());
    EXPECT_EQ(place(2), block(start.left + 10, start.top - 20, 104, 87));
    const Rect dragged = place();
    for (const Point corner : {Point{130, 60}, {120, 35}}) window().moveTo(corner);
    EXPECT_EQ(place(), block(dragged.left + 10, dragged.top + 5, 104, 87));
    EXPECT_FALSE(boxWindow().label()->EnableScroll()) << "no room is kept for bars that it does not need";

    // The outline goes when the box is hidden.
    press(kLeft, {150, 80});
    form().setWindowState(WindowState::Minimised);
    EXPECT_EQ(boxWindow().outlines(), std::vector<Rect>{});
}

TEST_F(HelpBoxTest, ItFollowsTheGridAndStaysWithItsWindow) {
    const Rect start = place();
    form().Form_Resize();
    setSize(100, 40);
    EXPECT_EQ(place(), block(start.left - 80, start.top - 120, 104, 87));
    const frmTerm& below = form();
    sequence(rows::kNewScreen);
    EXPECT_EQ(below.HelpBoxes().openSlots().size() + form().HelpBoxes().openSlots().size(), 1U);
}

TEST_F(HelpBoxTest, ItsTextIsParsedAgainForAnotherFontAlone) {
    // The first layout after a parse looks for the document's pictures.
    std::size_t parses = platform.picturesLookedFor.size() + 1;
    form().ShowHelpBox(1, 2, 3, 10, 2,
                       "<html><img src=missing.bmp>words that need several narrow lines</html>");
    EXPECT_EQ(platform.picturesLookedFor.size(), parses);
    const struct {
        std::int16_t offset, fontSize;
        float cell;
        std::size_t linesSeen;
        bool parsed, scrolls;
    } cases[] = {{0, 10, 8, 3, true, true},
                 {5, 10, 8, 3, false, true},
                 {5, 10, 20, 1, false, false},
                 {5, 12, 20, 2, true, false},
                 {5, 14, 8, 2, true, true}};
    for (const auto& c : cases) {
        box()->followGrid(c.offset, 0, c.cell, 16, "Courier New", c.fontSize);
        parses += c.parsed ? 1U : 0U;
        EXPECT_EQ(platform.picturesLookedFor.size(), parses);
        EXPECT_EQ(boxWindow().labelWindow()->textLines().size(), c.linesSeen);
        EXPECT_EQ(boxWindow().label()->vscScroll().visible, c.scrolls);
    }
}

TEST_F(HelpBoxTest, ItsTextIsAPointSmallerWhereThatCanBe) {
    const std::pair<std::int16_t, float> cases[] = {{10, 9}, {1, 9}, {-5, 9}, {32767, 9}, {2, 1}};
    for (const auto& [told, shown] : cases) {
        box()->FontInfo("Courier New", told);
        EXPECT_EQ(boxWindow().label()->DefaultFontSize(), shown) << told;
    }
}

TEST_F(HelpBoxTest, ButtonsMeanWhatTheyMeanOverLinksToo) {
    const struct {
        std::int16_t button;
        Point to;
        const char* link;
        std::tuple<std::size_t, int, bool> openedMenusAndMoved;
    } cases[] = {
        {kLeft, {150, 80}, nullptr, {0, 0, false}},  {kLeft, {150, 80}, "http://a", {1, 0, false}},
        {kLeft, {151, 80}, nullptr, {0, 0, true}},   {kLeft, {151, 80}, "http://a", {0, 0, true}},
        {kRight, {151, 80}, nullptr, {0, 1, false}}, {kRight, {150, 80}, "http://a", {0, 1, false}},
    };
    for (const auto& c : cases) {
        show(1);
        const Rect start = place();
        const std::size_t before = opened();
        press(c.button, {150, 80});
        move(c.to);
        EXPECT_EQ(boxWindow().openMenus(), 0);
        release(c.link);
        EXPECT_EQ(std::tuple(opened() - before, boxWindow().openMenus(), place() != start),
                  c.openedMenusAndMoved);
        EXPECT_EQ(boxWindow().outlines(), std::vector<Rect>{});
    }
}

TEST_F(HelpBoxTest, OnlyWebAddressesAreOpened) {
    const auto click = [this](const char* address) {
        press(kLeft, {});
        release(address);
    };
    for (const char* address : {"calc.exe", "file://a", "http:/a", "http://", "http://a b", "https://a\"b",
                                "http://a'b", "http://a\\b", "ftp://a", "javascript:http://a", "#a"}) {
        click(address);
    }
    EXPECT_EQ(opened(), 0U);
    click("HTTPS://b/?c&d");
    HeadlessLauncher& launcher = platform.headlessLauncher;
    EXPECT_EQ(launcher.shellStarts.back(), (HeadlessLauncher::Start{"HTTPS://b/?c&d", "", ""}));
    launcher.shellResult = 31;
    click("http://c");
    EXPECT_EQ(window().failures().size(), 1U);
    click(("http://" + std::string(894, 'a')).c_str());
    EXPECT_EQ(window().failures().size(), 2U);
    EXPECT_EQ(opened(), 2U) << "too long for the platform";
}

TEST_F(HelpBoxTest, FiftyOneSlots) {
    for (const int slot : {0, 50, 1}) show(slot);
    for (const int slot : {-1, 51}) {
        EXPECT_EQ(errorOf([&] { show(slot); }), 9);
        EXPECT_EQ(errorOf([&] { form().HideHelpBox(static_cast<std::int16_t>(slot)); }), 9);
    }
    form().HideHelpBox(7);
    boxWindow(50).events()->mnuRightClickClose_Click();
    EXPECT_EQ(form().HelpBoxes().openSlots(), (std::vector{0, 1}));
    // The object of a closed box stays for those who hold it, and ignores what it is told.
    const std::shared_ptr<frmHelp> closed = box();
    form().Unload();
    show(3);
    closed->SetBoxCord(1, 1, 1, 1);
    closed->ShowBox(7, 8);
    closed->Form_Resize();
    closed->MouseDown(kLeft, 0, 0, 0);
    closed->HyperlinkClick("http://a");
    EXPECT_EQ(platform.desktop.helpWindows.size() + opened(), 0U);
}

}  // namespace
}  // namespace kavrelon
