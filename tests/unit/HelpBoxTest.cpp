#include <functional>
#include <tuple>

#include "tests/unit/Session.h"

namespace kavrelon {

inline void PrintTo(const Rect& block, std::ostream* out) {
    *out << block.left << ',' << block.top << " to " << block.right << ',' << block.bottom;
}

namespace {

constexpr std::int16_t kLeft = 1;
constexpr std::int16_t kRight = 2;
constexpr int kNewScreen = 36;

Rect block(int left, int top, int width, int height) {
    return {left, top, left + width, top + height};
}

/// A box without a terminal, on a desktop whose only other window stands at (100, 50).
class HelpBoxTest : public testing::Test, protected HelpPlatform, protected HelpBoxOwner {
  protected:
    HelpBoxTest() {
        desktop.rectangleOf = [this](WindowId) { return parent; };
        desktop.isShown = [this](WindowId) { return parentShown; };
        box->SetBase(0, 0, 8, 16);
        box->SetBoxCord(2, 3, 10, 4);
    }
    ~HelpBoxTest() override { box->Unload(); }

    std::unique_ptr<HelpWindow> createHelpWindow(std::weak_ptr<HelpWindowEvents> events) override {
        return std::make_unique<HeadlessHelpWindow>(desktop, std::move(events));
    }
    void HelpBoxClosed(const frmHelp&) noexcept override { ++closed; }
    void HelpBoxLink(const std::string& Href) noexcept override { links += Href; }
    std::shared_ptr<const Picture> HelpBoxPicture(const std::string&) noexcept override { return nullptr; }

    HeadlessHelpWindow& window() const { return *windowOf(desktop, *box); }
    void press(std::int16_t button, Point at) {
        desktop.cursor = at;
        desktop.heldButtons = button;
        box->MouseDown(button, 0, 0, 0);
    }
    /// Moves the mouse, which the label tells of as of a release.
    void move(Point to) {
        desktop.cursor = to;
        box->MouseUp(desktop.heldButtons, 0, 0, 0);
    }
    void release() {
        const std::int16_t button = std::exchange(desktop.heldButtons, 0);
        box->dragEnded();
        box->MouseUp(button, 0, 0, 0);
    }
    /// Over a link the label keeps the release to itself, and tells of the link a little later.
    void releaseOverLink() {
        desktop.heldButtons = 0;
        box->dragEnded();
        box->HyperlinkClick("link");
    }

    HeadlessDesktop desktop;
    Rect parent = block(100, 50, 640, 400);
    bool parentShown = true;
    int closed = 0;
    std::string links;
    std::shared_ptr<frmHelp> box = frmHelp::load(*this, *this);
};

TEST_F(HelpBoxTest, TextBecomesADocument) {
    const struct {
        const char *text, *document;
    } cases[] = {
        {"a^b", "a<br>b"},
        {"x < y\r\nz > &amp;", "x&nbsp;&#060;&nbsp;y<br>z&nbsp;&#062;&nbsp;&#038;"},
        {"<HTML>", "&#060;HTML&#062;"},
        {"^", "<br>"},
        {"", ""},
    };
    for (const auto& c : cases) {
        box->HelpInfo(c.text);
        EXPECT_EQ(box->HelpInfo(), "<HTML><BODY>" + std::string(c.document) + "</BODY></HTML>") << c.text;
    }
    box->HelpInfo("<html><body>a b^<b>c</b>");
    EXPECT_EQ(box->HelpInfo(), "<html><body>a b <b>c</b>");
}

TEST_F(HelpBoxTest, ItStandsAtItsCells) {
    EXPECT_EQ(window().rectangle(), Rect{});
    box->ShowBox(7, 8);
    EXPECT_EQ(window().owner(), 7U);
    EXPECT_TRUE(window().visible());
    // 80 pixels and 100 twips are 86 and two thirds.
    EXPECT_EQ(window().rectangle(), block(112, 74, 104, 87));

    using Cells = std::array<std::int16_t, 4>;
    const struct {
        std::int16_t xOffset, yOffset;
        float charWidth, charHeight;
        Cells cells;
        Rect place;
    } cases[] = {
        {5, 7, 8, 16, {2, 3, 10, 4}, block(117, 81, 104, 87)},
        {0, 0, 9, 15, {0, 1, 0, 0}, block(96, 42, 27, 22)},
        {0, 0, 7, 15, {1, 1, 1, 1}, block(96, 58, 28, 37)},
        {0, 0, 8.5F, 16.5F, {2, 3, 10, 4}, block(113, 75, 110, 89)},
        {-20, 0, 8, 16, {-3, -2, -2, -1}, block(52, -6, 8, 7)},
        {0, 0, 8, 16, {32767, 32767, 32767, 32767}, block(262224, 524314, 262160, 524295)},
    };
    for (const auto& c : cases) {
        box->SetBase(c.xOffset, c.yOffset, c.charWidth, c.charHeight);
        box->SetBoxCord(c.cells[0], c.cells[1], c.cells[2], c.cells[3]);
        EXPECT_EQ(window().rectangle(), c.place) << testing::PrintToString(c.cells);
    }
}

TEST_F(HelpBoxTest, ADragMovesTheOutlineAndThenTheBox) {
    box->ShowBox(7, 8);
    const Rect start = window().rectangle();
    press(kLeft, {150, 80});
    EXPECT_EQ(window().outlines(), (std::vector{start}));
    for (const Point at : {Point{151, 80}, Point{100, 200}, Point{140, 100}}) move(at);
    EXPECT_EQ(window().rectangle(), start);
    const Rect there = block(102, 94, 104, 87);
    EXPECT_EQ(window().outlines(), (std::vector{there}));
    release();
    EXPECT_EQ(window().rectangle(), there);
    move({300, 300});
    EXPECT_EQ(window().rectangle(), there);

    // It goes with its parent from there, over a time in which that could not be seen.
    parentShown = false;
    parent = block(-32000, -32000, 0, 0);
    box->parentChanged();
    EXPECT_FALSE(window().visible());
    parentShown = true;
    parent = block(110, 30, 640, 400);
    box->parentChanged();
    EXPECT_TRUE(window().visible());
    EXPECT_EQ(window().rectangle(), block(112, 74, 104, 87));

    // What ends the box or hides it takes the outline off.
    press(kLeft, {150, 80});
    parentShown = false;
    box->parentChanged();
    EXPECT_EQ(window().outlines(), std::vector<Rect>{});
}

TEST_F(HelpBoxTest, ButtonsMeanWhatTheyMeanOverLinksToo) {
    struct Case {
        std::int16_t button;
        Point to;
        bool overLink;
        std::string links;
        int menus;
        bool moved;
    };
    const Case cases[] = {
        {kLeft, {150, 80}, false, "", 0, false},  {kLeft, {150, 80}, true, "link", 0, false},
        {kLeft, {151, 80}, false, "", 0, true},   {kLeft, {151, 80}, true, "", 0, true},
        {kRight, {151, 80}, false, "", 1, false}, {kRight, {150, 80}, true, "", 1, false},
    };
    for (const Case& c : cases) {
        links.clear();
        box->ShowBox(7, 8);
        const Rect start = window().rectangle();
        const int menus = window().openMenus();
        press(c.button, {150, 80});
        move(c.to);
        EXPECT_EQ(window().openMenus(), menus);
        c.overLink ? releaseOverLink() : release();
        EXPECT_EQ(std::tuple(links, window().openMenus() - menus, window().rectangle() != start),
                  std::tuple(c.links, c.menus, c.moved));
        EXPECT_EQ(window().outlines(), std::vector<Rect>{});
    }
}

TEST_F(HelpBoxTest, ClosedItIsGoneAndIgnoresTheRest) {
    box->FontInfo("Courier New", 10);
    box->ShowBox(7, 8);
    box->mnuRightClickClose_Click();
    box->Form_Unload();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(desktop.helpWindows.size(), 0U);
    box->SetBoxCord(1, 1, 1, 1);
    box->HelpInfo("text");
    box->ShowBox(7, 8);
    box->HyperlinkClick("link");
    for (const std::int16_t button : {kLeft, kRight}) {
        press(button, {0, 0});
        release();
    }
    EXPECT_EQ(links + std::to_string(desktop.helpWindows.size()), "0");
}

class HelpBoxSlots : public testing::Test, protected Session {
  protected:
    HelpBoxSlots() { connect(); }
    void show(int slot) { form().ShowHelpBox(static_cast<std::int16_t>(slot), 2, 3, 10, 4, "text"); }
    HeadlessHelpWindow& boxWindow(int slot) {
        return *windowOf(platform.desktop, *form().helpBoxes().at(slot));
    }
    Rect place(int slot) { return boxWindow(slot).rectangle(); }
};

TEST_F(HelpBoxSlots, FiftyOneOfThem) {
    for (const int slot : {0, 50, 0}) show(slot);
    EXPECT_EQ(platform.desktop.helpWindows.size(), 2U);
    for (const int slot : {-1, 51}) {
        EXPECT_EQ(errorOf([&] { show(slot); }), 9);
        EXPECT_EQ(errorOf([&] { form().HideHelpBox(static_cast<std::int16_t>(slot)); }), 9);
    }
    form().HideHelpBox(7);
    boxWindow(50).events()->mnuRightClickClose_Click();
    EXPECT_EQ(form().helpBoxes().openSlots(), std::vector{0});
    form().Unload();
    EXPECT_EQ(errorOf([&] { show(51); }), 9);
    show(3);
    EXPECT_EQ(platform.desktop.helpWindows.size(), 0U);
}

TEST_F(HelpBoxSlots, BoxesGoWithTheirWindow) {
    show(1);
    const Rect start = place(1);
    const auto terminalState = [this](WindowState state) { form().setWindowState(state); };
    window().moveTo({30, 40});
    EXPECT_EQ(place(1), block(start.left + 30, start.top + 40, 104, 87));
    terminalState(WindowState::Minimised);
    show(2);
    EXPECT_FALSE(boxWindow(1).visible() || boxWindow(2).visible());
    terminalState(WindowState::Normal);
    EXPECT_TRUE(boxWindow(1).visible() && boxWindow(2).visible());
    EXPECT_EQ(place(2), place(1));

    // A grid of another size stands elsewhere, and the box with it.
    setSize(100, 40);
    EXPECT_EQ(place(1), block(start.left + 30 - 80, start.top + 40 - 120, 104, 87));

    frmTerm& below = form();
    sequence(kNewScreen);
    ASSERT_NE(&form(), &below);
    EXPECT_EQ(below.helpBoxes().openSlots().size(), 2U);
}

TEST_F(HelpBoxSlots, OnlyWebAddressesAreOpened) {
    show(1);
    const auto click = [this](const char* address) {
        auto* box = dynamic_cast<frmHelp*>(boxWindow(1).events().get());
        box->MouseDown(kLeft, 0, 0, 0);
        box->MouseUp(kLeft, 0, 0, 0);
        box->HyperlinkClick(address);
    };
    for (const char* address : {"calc.exe", "file://a", "http:/a", "http://", "http://a b", "https://a\"b",
                                "javascript:http://a", "#a"}) {
        click(address);
    }
    EXPECT_EQ(platform.headlessLauncher.shellStarts.size(), 0U);
    for (const char* address : {"http://a", "HTTPS://b/?c&d"}) {
        click(address);
        EXPECT_EQ(platform.headlessLauncher.shellStarts.back(), (HeadlessLauncher::Start{address, "", ""}));
    }
    platform.headlessLauncher.shellResult = 31;
    click("http://c");
    EXPECT_EQ(window().failures().size(), 1U);
    EXPECT_EQ(platform.headlessLauncher.plainStarts.size(), 0U);
}

}  // namespace
}  // namespace kavrelon
