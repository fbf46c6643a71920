// First, since it makes a macro of the name LoadImage.
#include <windows.h>

#include <oleacc.h>

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/win32/Win32LabelWindow.h"
#include "support/com/ComPtr.h"
#include "support/com/ComText.h"
#include "support/win32/Messages.h"
#include "tests/windows/WindowInputSupport.h"

namespace kavrelon {
namespace {

constexpr Size kPlace{300, 200};

/// A label on a form, its user, and its container.
class HtmlWindow : public testing::Test, public LabelContainer, public HTMLLabelEvents {
  protected:
    HtmlWindow() { open("STATIC"); }
    ~HtmlWindow() override { close(); }

    bool visible() const noexcept override { return true; }
    bool userMode() const noexcept override { return true; }
    std::optional<int> parentWindowState() const noexcept override { return 0; }
    void callParent(const std::string&, const std::vector<std::string>&) noexcept override {}
    void HyperlinkClick(const std::string& Href) noexcept override {
        clicked = Href;
        close();
    }
    std::shared_ptr<const Picture> LoadImage(const std::string&) noexcept override { return {}; }
    void MouseDown(std::int16_t Button, std::int16_t, float, float) noexcept override { down = Button; }
    void MouseMove(std::int16_t, std::int16_t, float, float) noexcept override {}
    void MouseUp(std::int16_t, std::int16_t, float, float) noexcept override {}

    void open(const char* formClass) {
        close();
        form.reset(CreateWindowA(formClass, "", WS_POPUP | WS_VISIBLE, 50, 50, 400, 300, nullptr, nullptr,
                                 nullptr, nullptr));
        SetForegroundWindow(form.get());
        open();
    }
    void open() {
        label = std::make_shared<HTMLLabel>();
        window = Win32LabelWindow::create(GetModuleHandleA(nullptr), form.get(),
                                          {0, 0, kPlace.width, kPlace.height}, label, *this);
        label->attach(window.get(), this);
        label->savedProperties({.EnableAnchors = true, .EnableScroll = true});
        window->show(true);
    }
    void close() {
        if (label == nullptr) return;
        label->attach(nullptr, nullptr);
        window.reset();
        label.reset();
    }
    void moveTo(Point place) const { EXPECT_TRUE(pumpUntil(mouseAt(window->hWnd(), place))); }
    Point middleOfLink() const {
        const auto index = static_cast<std::size_t>(label->document().mintLinks()[0]);
        const HTMLElement& link = label->document().mudtElements()[index];
        return {(link.lngLeft + link.lngRight) / 2, (link.lngTop + link.lngBottom) / 2};
    }
    WindowImage shown() const { return WindowImage(window->picViewPort()); }
    static HWND toolTip() { return FindWindowA("tooltips_class32", nullptr); }

    WindowHandle form;
    std::shared_ptr<HTMLLabel> label;
    std::shared_ptr<Win32LabelWindow> window;
    std::string clicked;
    int down = 0;
};

/// A text with lines of many lengths.
std::string longText() {
    std::string text = "<BODY BGCOLOR=#FFFFFF><FONT COLOR=#FF0000>";
    for (std::size_t line = 0; line < 60; ++line) text += std::string(line * 7 % 25 + 2, 'x') + "<BR>";
    return text;
}

TEST_F(HtmlWindow, DrawsTextWhereTheLayoutPlacesItWhereverItIsScrolledTo) {
    label->DocumentHTML(longText());
    HTMLDocument document;
    LabelPictures pictures;
    Layout layout;
    document.setDocument(label->DocumentHTML(), {});
    layout.measure(document, {}, pictures, window->canvas());
    layout.place(document, shown().width());
    for (const int scrolled : {0, 3, 200, label->vscScroll().Max}) {
        label->vscScroll_Change(scrolled);
        const WindowImage image = shown();
        const RECT part{5, 30, 90, 80};
        RedrawWindow(window->picViewPort(), &part, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        EXPECT_EQ(shown(), image);
        int seen = 0;
        for (const TextRun& line : layout.runs()) {
            const Rect place{line.place.left, line.place.top - scrolled, line.place.right,
                             line.place.bottom - scrolled};
            if (place.top < 0 || place.bottom > image.height()) continue;
            ++seen;
            EXPECT_FALSE(image.all({place.right - 8, place.top, place.right, place.bottom}, kWhite));
            EXPECT_TRUE(image.all({place.right + 1, place.top, image.width(), place.bottom}, kWhite));
        }
        EXPECT_GT(seen, 5) << scrolled;
    }
}

TEST_F(HtmlWindow, TheMouseOnALinkIsAHandWithATooltip) {
    label->DocumentHTML("<A HREF=there TITLE='way out'>link</A><BR><BR>text");
    moveTo(middleOfLink());
    const HCURSOR hand = LoadCursorA(nullptr, MAKEINTRESOURCEA(32649));
    EXPECT_TRUE(pumpUntil([hand] { return GetCursor() == hand && IsWindowVisible(toolTip()); }));
    char text[80] = "";
    GetWindowTextA(toolTip(), text, sizeof text);
    EXPECT_STREQ(text, "way out");
    moveTo({middleOfLink().x, middleOfLink().y + 40});
    EXPECT_TRUE(pumpUntil([hand] { return GetCursor() != hand && !IsWindowVisible(toolTip()); }));
}

TEST_F(HtmlWindow, AClickedLinkIsToldLaterAndMayEndTheLabel) {
    label->DocumentHTML("<A HREF=there>link</A>");
    moveTo(middleOfLink());
    click(MOUSEEVENTF_LEFTDOWN);
    EXPECT_TRUE(pumpUntil([this] { return down == 1 && GetCapture() == window->picViewPort(); }));
    SendMessageA(window->picViewPort(), WM_LBUTTONUP, 0, MAKELPARAM(middleOfLink().x, middleOfLink().y));
    click(MOUSEEVENTF_LEFTUP);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(clicked, "");
    EXPECT_TRUE(pumpUntil([this] { return clicked == "there"; }));
    EXPECT_EQ(GetWindow(form.get(), GW_CHILD), nullptr);
}

TEST_F(HtmlWindow, BarWheelAndKeysMoveTheDocument) {
    label->DocumentHTML(longText());
    const ScrollState& bar = label->vscScroll();
    const auto change = [&](const std::function<void()>& act) {
        const int before = bar.Value;
        const WindowImage image = shown();
        act();
        EXPECT_TRUE(pumpUntil([&] { return bar.Value != before; }));
        EXPECT_NE(shown(), image);
        return bar.Value - before;
    };
    const HWND barWindow = ChildWindowFromPoint(window->hWnd(), {kPlace.width - 10, 20});
    // Posted, since a slow desktop could take the mouse back while the bar has the messages.
    const auto drag = [barWindow](int from, int to) {
        for (const auto& [message, y] :
             {std::pair{WM_LBUTTONDOWN, from}, {WM_MOUSEMOVE, to}, {WM_LBUTTONUP, to}})
            PostMessageA(barWindow, static_cast<UINT>(message), MK_LBUTTON, MAKELPARAM(8, y));
    };
    EXPECT_GT(change([&] { drag(24, 74); }), bar.LargeChange);
    EXPECT_EQ(change([&] { drag(kPlace.height - 10, kPlace.height - 10); }), bar.SmallChange);
    window->setFocus();
    EXPECT_LT(change([] { mouse_event(MOUSEEVENTF_WHEEL, 0, 0, WHEEL_DELTA, 0); }), 0);
    EXPECT_GT(change([] { press({{VK_NEXT}}); }), 0);
    press({{VK_CONTROL, VK_HOME}});
    EXPECT_TRUE(pumpUntil([&] { return bar.Value == 0; }));
}

TEST_F(HtmlWindow, InADialogTabLeavesTheLabelBehindItsLastLink) {
    open("#32770");
    const HWND next = CreateWindowA("BUTTON", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 9, 9, form.get(),
                                    nullptr, nullptr, nullptr);
    label->DocumentHTML("<A HREF=one>link</A>");
    window->setFocus();
    for (const HWND focus : {window->picViewPort(), next}) {
        MSG tab{window->picViewPort(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
        EXPECT_TRUE(IsDialogMessageA(form.get(), &tab));
        letMessagesThrough();
        EXPECT_EQ(GetFocus(), focus);
    }
}

TEST_F(HtmlWindow, ADestroyedWindowIgnoresCallsAndItsTitleWasTheDocuments) {
    label->DocumentHTML("<TITLE>Help</TITLE>text");
    char title[4] = "";
    GetWindowTextA(window->picViewPort(), title, sizeof title);
    EXPECT_STREQ(title, "Hel");
    form.reset();
    label->DocumentHTML(longText());
    window->setToolTipText("text");
    EXPECT_EQ(window->sizeInTwips(), Size{});
}

TEST_F(HtmlWindow, AThousandLabelsLeaveNothingBehindHoweverManyFontsTheyUse) {
    std::string fonts;
    for (int size = 0; size < 200; ++size) fonts += "<FONT SIZE=+" + std::to_string(size) + ">f</FONT>";
    const auto objectsAfter = [&](int rounds, const std::string& text) {
        for (int round = 0; round < rounds; ++round) {
            close();
            open();
            label->BorderStyle(static_cast<std::int16_t>(round % 2));
            label->DocumentHTML(text);
            window->setToolTipText("tip");
            UpdateWindow(window->picViewPort());
        }
        return countGdiObjects();
    };
    const int objects = objectsAfter(20, "<A HREF=there>link</A>");
    EXPECT_LE(objectsAfter(1000, "<A HREF=there>link</A>"), objects);
    EXPECT_LT(objectsAfter(2, fonts), objects + 40);
    close();
    WNDCLASSA found{};
    EXPECT_FALSE(GetClassInfoA(GetModuleHandleA(nullptr), "kavrelon.picViewPort", &found));
}

VARIANT child(LONG number) {
    VARIANT result{};
    result.vt = VT_I4;
    result.lVal = number;
    return result;
}

TEST_F(HtmlWindow, IsReadByAccessibilityTools) {
    label->DocumentHTML("<title>Help</title>See <a name=n>here</a> the <a href=one>first</a><p>" +
                        longText() + "<a href=two title=Tip>second<br>line</a>");
    window->setFocus();
    ComPtr<IAccessible> reader;
    ASSERT_EQ(AccessibleObjectFromWindow(window->picViewPort(), static_cast<DWORD>(OBJID_CLIENT),
                                         IID_IAccessible, reader.putVoid()),
              S_OK);
    LONG count = 0;
    EXPECT_EQ(reader->get_accChildCount(&count), S_OK);
    ASSERT_EQ(count, 2);

    EXPECT_EQ(reader->accSelect(SELFLAG_TAKEFOCUS, child(2)), S_OK);
    std::wstring told;
    for (LONG part = 0; part <= count; ++part) {
        Bstr name, value;
        VARIANT role{}, state{};
        EXPECT_EQ(reader->get_accName(child(part), name.put()), S_OK);
        EXPECT_EQ(reader->get_accValue(child(part), value.put()), S_OK);
        EXPECT_EQ(reader->get_accRole(child(part), &role), S_OK);
        EXPECT_EQ(reader->get_accState(child(part), &state), S_OK);
        told += std::wstring(name.view()) + L'|' + std::wstring(value.view().substr(0, 18)) + L'|' +
                std::to_wstring(role.lVal) + L'|' + std::to_wstring(state.lVal) + L'\n';
    }
    const LONG page = STATE_SYSTEM_READONLY | STATE_SYSTEM_FOCUSABLE;
    const LONG linked = STATE_SYSTEM_LINKED | STATE_SYSTEM_FOCUSABLE;
    EXPECT_EQ(told, L"Help|See here the first|15|" + std::to_wstring(page) + L"\nfirst|one|30|" +
                        std::to_wstring(linked | STATE_SYSTEM_OFFSCREEN) + L"\nsecond line|two|30|" +
                        std::to_wstring(linked | STATE_SYSTEM_FOCUSED) + L'\n');

    VARIANT found{};
    EXPECT_EQ(reader->get_accFocus(&found), S_OK);
    EXPECT_EQ(found.lVal, 2);
    LONG left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(reader->accLocation(&left, &top, &width, &height, child(2)), S_OK);
    EXPECT_EQ(reader->accHitTest(left + width / 2, top + height / 2, &found), S_OK);
    EXPECT_EQ(found.lVal, 2);
    EXPECT_EQ(reader->accHitTest(left + width / 2, 0, &found), S_FALSE);
    EXPECT_EQ(reader->get_accRole(child(3), &found), E_INVALIDARG);
    EXPECT_EQ(reader->accDoDefaultAction(child(0)), DISP_E_MEMBERNOTFOUND);

    // Following the link closes the window, which its reader outlives.
    EXPECT_EQ(reader->accDoDefaultAction(child(2)), S_OK);
    EXPECT_TRUE(pumpUntil([&] { return !clicked.empty(); }));
    EXPECT_EQ(clicked, "two");
    EXPECT_EQ(reader->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
}

}  // namespace
}  // namespace kavrelon
