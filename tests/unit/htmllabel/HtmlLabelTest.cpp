#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "headless/HeadlessLabelWindow.h"
#include "htmllabel/FormCall.h"
#include "htmllabel/HTMLLabel.h"
#include "support/Keys.h"

namespace kavrelon {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FormCallTest, CutsProcedureAndArguments) {
    const std::pair<const char*, FormCall> cases[] = {
        {" Show (1, 'a, b' , \"it's, ok\") ", {"Show", {"1", "a, b", "it's, ok"}}},
        {"Show(,'')", {"Show", {"", ""}}},
        {"Show( )", {"Show", {}}},
        {"Show('a'b, 'it''s, x)", {"Show", {"'a'b", "'it''s", "x"}}},
        {"Show((1), f(2)) end", {"Show", {"(1)", "f(2)"}}},
        {" )Show( 1", {")Show( 1", {}}},
        {"Show('a, b)", {"Show('a, b)", {}}},
    };
    for (const auto& [text, call] : cases) EXPECT_EQ(parseFormCall(text), call) << text;
}

TEST(LabelPlacementTest, PlacesThePartsInTwips) {
    LabelOutline outline{.twips = {3000, 1500}, .barThickness = {16, 20}, .Appearance = 0};
    EXPECT_EQ(placeLabelParts(outline).picViewPort, (Rect{0, 0, 200, 100}));
    outline.Appearance = 1;
    EXPECT_EQ(placeLabelParts(outline).picViewPort, (Rect{0, 0, 198, 98}));
    outline.EnableScroll = true;
    const LabelPlacement noBars{
        {0, 0, 180, 96}, {180, 0, 196, 96}, {0, 96, 200, 116}, {180, 96, 196, 116}, true};
    EXPECT_EQ(placeLabelParts(outline), noBars);
    outline.Appearance = 0;
    outline.vscVisible = outline.hscVisible = true;
    const LabelPlacement bars{{0, 0, 182, 78}, {182, 0, 198, 78}, {0, 78, 182, 98}, {182, 78, 198, 98}, true};
    EXPECT_EQ(placeLabelParts(outline), bars);
}

// A label in a headless window of 200 x 100 pixels, with its events written down.
class HtmlLabelTest : public ::testing::Test, protected HTMLLabelEvents {
  protected:
    using Bits = std::int16_t;

    HtmlLabelTest() { renew(); }
    void renew() {
        label = std::make_shared<HTMLLabel>();
        window.paintFor(label);
        label->EnableAnchors(true);
        label->attach(&window, this);
    }
    void HyperlinkClick(const std::string& Href) noexcept override { note("click " + Href); }
    std::shared_ptr<const Picture> LoadImage(const std::string& Source) noexcept override {
        return note("load " + Source), nullptr;
    }
    void MouseDown(Bits b, Bits s, float x, float y) noexcept override { note("down", b, s, x, y); }
    void MouseMove(Bits b, Bits s, float x, float y) noexcept override { note("move", b, s, x, y); }
    void MouseUp(Bits b, Bits s, float x, float y) noexcept override { note("up", b, s, x, y); }
    template <class... Numbers>
    void note(std::string event, Numbers... numbers) {
        ((event += ' ' + std::to_string(static_cast<int>(numbers))), ...);
        log.push_back(event);
        if (const auto handler = std::exchange(onEvent, nullptr)) handler();
    }
    std::vector<std::string> events() { return std::exchange(log, {}); }

    const std::string lines =
        "<br>2<br>3<br>4<br>5<br>6<br>7<br>8<br>9<br>10<br>11<br>12<br>13<br>14<br>15<br>";
    const HTMLElement& link(std::size_t place) const {
        return label->document()
            .mudtElements()[static_cast<std::size_t>(label->document().mintLinks()[place])];
    }
    // Just inside the top left corner of a link.
    Point onLink(std::size_t place) const { return {link(place).lngLeft + 1, link(place).lngTop + 1}; }
    void release(std::size_t place) { label->picViewPort_MouseUp(1, 0, onLink(place)); }

    std::shared_ptr<HTMLLabel> label;
    HeadlessLabelWindow window;
    std::vector<std::string> log;
    std::function<void()> onEvent;  // runs once, in the next event
};

TEST_F(HtmlLabelTest, LaysOutWhatIsSeenAndAsksOnceForEachPicture) {
    label->DocumentHTML("<body background=p><img src=a><img src=b><img src=a>");
    window.repaintViewPort();
    EXPECT_THAT(events(), ElementsAre("load p", "load a", "load b"));

    // A label that is hidden or has no size yet is not laid out. Its first size always counts.
    window.surroundings() = {.twips = {}, .visible = false, .userMode = false};
    label->attach(&window, this);
    label->DocumentHTML("<img src=c>");
    window.surroundings().twips = {3000, 1500};
    label->UserControl_Show();
    label->UserControl_Resize();
    label->DocumentHTML("<img src=d>");
    EXPECT_THAT(events(), IsEmpty());
    window.repaintViewPort();
    EXPECT_THAT(events(), ElementsAre("load p", "load d"));
}

TEST_F(HtmlLabelTest, TheDocumentBegunLastStays) {
    window.onMessages([&] {
        EXPECT_EQ(window.shown().pointer, MousePointer::Hourglass);
        window.onMessages(nullptr);
        label->DefaultFontSize(12);
    });
    label->DocumentHTML("<img src=new>");
    EXPECT_THAT(events(), ElementsAre("load new")) << "the font's parse takes the new text over";

    onEvent = [&] {
        window.repaintViewPort();
        label->DocumentHTML("<img src=c>");
    };
    label->DocumentHTML("<img src=a><img src=b>");
    EXPECT_THAT(events(), ElementsAre("load a", "load c"));
    EXPECT_EQ(window.shown().pointer, MousePointer::Default);
}

TEST_F(HtmlLabelTest, AnyEventMayDestroyTheLabel) {
    const std::function<void()> destroying = [this] { label->attach(nullptr, nullptr), label.reset(); };
    const std::function<void(HTMLLabel&)> handlers[] = {
        [&](HTMLLabel& it) { onEvent = destroying, it.DocumentHTML("<img src=a><img src=b>"); },
        [&](HTMLLabel& it) { onEvent = destroying, it.UserControl_Show(); },
        [&](HTMLLabel& it) { onEvent = destroying, release(0), it.tmrHyperlinkClick_Timer(); },
        [&](HTMLLabel& it) { window.onMessages(destroying), it.BackColor(0); },
    };
    for (const auto& handler : handlers) {
        renew();
        window.surroundings().visible = &handler != &handlers[1];
        label->DocumentHTML("<a href=x>x</a><img src=a>");
        handler(*label);
        EXPECT_EQ(label, nullptr);
    }
}

TEST_F(HtmlLabelTest, KeepsItsPlaceWhenPropertiesParseAgainButNotWhenResized) {
    HTMLLabelProperties saved = HTMLLabelProperties::whenNotSaved();
    saved.EnableScroll = true;
    label->savedProperties(saved);
    label->DocumentHTML("<img src=a>" + lines + lines);
    label->vscScroll_Change(100);
    label->savedProperties(saved);
    EXPECT_THAT(events(), ElementsAre("load a", "load a"));

    const std::tuple<std::optional<int>, bool, int, int> resizes[] = {
        {1, true, 180, 100}, {std::nullopt, true, 180, 100}, {0, false, 180, 100}, {0, true, 380, 0}};
    for (const auto& [windowState, userMode, width, value] : resizes) {
        window.surroundings() = {{6000, 1500}, true, userMode, windowState};
        label->UserControl_Resize();
        EXPECT_EQ(window.shown().placement.picViewPort.right, width);
        EXPECT_EQ(window.shown().vscScroll.Value, value);
    }
    label->vscScroll_Change(100);
    window.surroundings().visible = false;
    label->DocumentHTML("short");
    EXPECT_EQ(label->DocumentTitle(), "Unknown");
    EXPECT_EQ(window.shown().vscScroll.Value, 0);
    window.repaintViewPort();
    EXPECT_FALSE(window.shown().vscScroll.visible);
}

TEST_F(HtmlLabelTest, ScrollsByKeysAndWheel) {
    using keys::kDown, keys::kEnd, keys::kHome, keys::kPageDown, keys::kPageUp, keys::kRight, keys::kUp;
    using shifts::kCtrl, shifts::kShift;
    label->EnableScroll(true);
    label->DocumentHTML(lines + lines);
    const int Max = label->vscScroll().Max;
    // A value, a key, the shift keys that are held, and the value after it.
    const std::tuple<int, Bits, Bits, int> moves[] = {
        {20, kUp, 0, 5},       {5, kUp, 0, 5},      {0, kDown, 0, 15},      {Max - 5, kDown, 0, Max - 5},
        {20, kPageUp, 0, 0},   {96, kPageUp, 0, 0}, {0, kPageDown, 0, 96},  {Max - 20, kPageDown, 0, Max},
        {20, kHome, kCtrl, 0}, {20, kHome, 0, 20},  {20, kEnd, kCtrl, Max}, {20, kEnd, kShift, 20},
        {20, kRight, 0, 20}};
    for (const auto& [from, key, shift, to] : moves) {
        label->vscScroll_Change(from);
        const int paints = window.shown().paints;
        const bool used = label->picViewPort_KeyDown(key, shift);
        EXPECT_EQ(used, key != kRight && shift != kShift && (key != kHome || shift != 0));
        EXPECT_EQ(window.shown().vscScroll.Value, to) << key << " from " << from;
        EXPECT_EQ(window.shown().paints - paints, from == to ? 0 : 1);
    }
    for (const int beyond : {-1, Max + 1}) label->vscScroll_Change(beyond);
    EXPECT_EQ(window.shown().vscScroll.Value, 20);

    for (int turn = 0; turn < 10; ++turn) label->picViewPort_MouseWheel(-0.05);
    EXPECT_NEAR(window.shown().vscScroll.Value, 42, 1) << "half a notch of three lines";
    label->picViewPort_MouseWheel(1e9);
    EXPECT_EQ(window.shown().vscScroll.Value, 0);
}

TEST_F(HtmlLabelTest, LinksAnswerToTheMouseInsideTheirEdges) {
    label->DocumentHTML("<a>no</a> <a href=one title=first>one</a> <a href=two>two</a>");
    const HTMLElement one = link(1);
    label->picViewPort_MouseMove(0, 0, onLink(1));
    EXPECT_EQ(window.shown().toolTipText, "") << "tooltips are off";
    label->EnableTooltips(true);
    label->drawPage(window.canvas(), {40, 20});
    label->picViewPort_MouseMove(0, 0, {one.lngRight - 1, one.lngBottom - 1});
    EXPECT_EQ(window.shown().pointer, MousePointer::Custom);
    EXPECT_EQ(window.shown().toolTipText, "first");
    EXPECT_THAT(events(), IsEmpty());
    for (const Point edge :
         {Point{one.lngLeft, one.lngTop + 1}, Point{one.lngRight, one.lngTop + 1},
          Point{one.lngLeft + 1, one.lngTop}, Point{one.lngLeft + 1, one.lngBottom}, onLink(0)}) {
        label->picViewPort_MouseMove(0, 0, edge);
        EXPECT_EQ(events().size(), 1U) << edge.x << ',' << edge.y;
        EXPECT_EQ(window.shown().pointer, MousePointer::Arrow);
        EXPECT_EQ(window.shown().toolTipText, "");
    }
    label->picViewPort_MouseMove(1, 2, {150, 90});
    label->picViewPort_MouseDown(2, 0, {150, 90});
    label->picViewPort_MouseUp(2, 4, {150, 90});
    label->EnableAnchors(false);
    label->picViewPort_MouseMove(0, 0, {one.lngLeft + 1, one.lngTop + 1});
    EXPECT_THAT(events(), ElementsAre("up 1 2 2250 1350", "down 2 0 2250 1350", "up 2 4 2250 1350",
                                      ::testing::StartsWith("move 0 0 ")));
}

TEST_F(HtmlLabelTest, FollowsLinksLaterAndJumpsAtOnce) {
    window.onCall(
        [&](const auto& name, const auto& arguments) { note("call " + name + " " + arguments.at(0)); });
    label->DocumentHTML(
        "<a href='#mid'>m</a> <a href='#MID'>none</a> <a href='#end'>e</a> <a href=\"vB: Go('a')\">c</a>" +
        lines + "<a name=mid>here</a>" + lines + "<a name=end>end</a>");
    for (const std::size_t followed : {3U, 0U}) release(followed);
    EXPECT_THAT(events(), IsEmpty());
    EXPECT_TRUE(window.shown().tmrHyperlinkClick);
    for (int tick = 0; tick < 2; ++tick) label->tmrHyperlinkClick_Timer();
    EXPECT_FALSE(window.shown().tmrHyperlinkClick);
    release(3);
    label->tmrHyperlinkClick_Timer();
    EXPECT_THAT(events(), ElementsAre("click #mid", "call Go a"));

    label->EnableScroll(true);
    const std::pair<std::size_t, int> jumps[] = {{0, link(4).lngTop}, {1, 0}, {2, label->vscScroll().Max}};
    for (const auto& [followed, value] : jumps) {
        label->vscScroll_Change(0);
        release(followed);
        EXPECT_EQ(label->vscScroll().Value, value);
    }
}

TEST_F(HtmlLabelTest, TabWalksTheLinksAndEnterFollows) {
    using keys::kTab, keys::kEnter;
    label->EnableScroll(true);
    label->DocumentHTML("<a name=n>name</a><a href=one>one</a>" + lines + "<a href=two>two</a>");
    const int one = link(1).lngTop, two = link(2).lngTop, bottom = link(2).lngBottom - 96;
    // A key and the shift keys that are held; whether the label takes it, and then the top of the link in
    // focus and the scroll value.
    const std::tuple<Bits, Bits, bool, int, int> steps[] = {
        {kEnter, 0, false, -1, 0},      {kTab, 0, true, one, 0},       {kTab, 0, true, two, bottom},
        {kEnter, 0, true, two, bottom}, {kTab, 2, false, two, bottom}, {kTab, 0, false, -1, bottom},
        {kTab, 1, true, two, bottom},   {kTab, 1, true, one, one}};
    for (const auto& [key, shift, taken, top, value] : steps) {
        EXPECT_EQ(label->picViewPort_KeyDown(key, shift), taken);
        EXPECT_EQ(window.shown().focus.value_or(Rect{.top = -1}).top, top);
        EXPECT_EQ(label->vscScroll().Value, value);
    }
    label->tmrHyperlinkClick_Timer();
    EXPECT_THAT(events(), ElementsAre("click two"));
    label->picViewPort_LostFocus();
    EXPECT_EQ(window.shown().focus, std::nullopt);
    label->picViewPort_GotFocus();
    label->DocumentHTML("another");
    EXPECT_EQ(window.shown().focus, std::nullopt);
}

TEST_F(HtmlLabelTest, TellsItsLinksToThoseWhoDoNotSeeThem) {
    label->EnableScroll(true);
    label->DocumentHTML("<a name=n>name</a><a href=one>the <i>first</i></a>" + lines +
                        "<a href=two title=Tip><img></a><a href=three></a>");
    EXPECT_EQ(window.shown().documents, 1);
    EXPECT_FALSE(label->focusLink(0) || label->focusLink(3) || label->focusLink(4) || label->followLink(-1));
    EXPECT_TRUE(label->focusLink(2));
    EXPECT_EQ(window.shown().focusMoves, 1);

    const int scrolled = label->vscScroll().Value;
    EXPECT_GT(scrolled, 0);
    const auto links = label->links();
    ASSERT_EQ(links.size(), 3U);
    std::vector<std::string> told;
    told.reserve(links.size());
    for (const auto& [place, name, href, box, inFocus] : links) {
        told.push_back(std::to_string(place) + ' ' + name + ' ' + href + ' ' + std::to_string(box.top) +
                       (inFocus ? " focus" : ""));
    }
    EXPECT_THAT(told, ElementsAre("1 the first one " + std::to_string(link(1).lngTop - scrolled),
                                  "2 Tip two " + std::to_string(link(2).lngTop - scrolled) + " focus",
                                  "3 three three 0"));
    EXPECT_TRUE(label->followLink(1));
    label->tmrHyperlinkClick_Timer();
    EXPECT_THAT(events(), ElementsAre("click one"));
    label->EnableAnchors(false);
    EXPECT_THAT(label->links(), IsEmpty());
}

}  // namespace
}  // namespace kavrelon
