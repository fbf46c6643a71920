#include <numeric>

#include "terminal/win32/Clipboard.h"
#include "tests/windows/WindowInputSupport.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

TEST_F(WindowInput, KeysSendWhatTheTablesSay) {
    const std::pair<std::vector<Chord>, std::string> cases[] = {
        {{{VK_END}, {VK_HOME}, {VK_LEFT}, {VK_UP}, {VK_RIGHT}, {VK_DOWN}}, "\x05\x01\x15\x1A\x06\n"},
        {{{VK_DELETE}, {VK_INSERT}, {VK_PRIOR}, {VK_NEXT}}, "\x04\t\x0F\x10"},
        {{{VK_SHIFT, VK_UP}, {VK_MENU, VK_UP}, {VK_CONTROL, VK_UP}}, "\x1A\x1A\x1A"},
        {{{VK_PRINT}, {VK_PAUSE}, {VK_CONTROL, VK_CANCEL}}, "<break>"},
        {{{'A'}, {VK_SHIFT, 'A'}, {'5'}, {VK_SPACE}}, "aA5 "},
        {{{VK_RETURN}, {VK_TAB}, {VK_BACK}, {VK_ESCAPE}}, "\r\t\b\x1B"},
        {{{VK_CONTROL, VK_RETURN}, {VK_CONTROL, VK_SPACE}, {VK_CONTROL, 'Q'}}, ""},
        {{{VK_CONTROL, 'V'}}, "text"}};
    putOnClipboard("text");
    for (const auto& [chords, sent] : cases) EXPECT_EQ(sentBy(chords), sent);
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        if (letter == 'Q' || letter == 'V') continue;
        EXPECT_EQ(sentBy({{VK_CONTROL, letter}}), std::string(1, static_cast<char>(letter - 'A' + 1)));
    }
    const Chord banks[] = {{}, {VK_MENU}, {VK_SHIFT}, {VK_SHIFT, VK_MENU}};
    for (int n = 1; n <= 48; ++n) {
        Chord keys = banks[(n - 1) / 12];
        keys.push_back(VK_F1 + (n - 1) % 12);
        Chord withCtrl = keys;
        withCtrl.insert(withCtrl.begin(), VK_CONTROL);
        const std::string expected = "<F" + std::to_string(n) + ">";
        EXPECT_EQ(sentBy({keys, withCtrl}), expected + expected);
        EXPECT_EQ(menusLeftOpen, 0) << expected;
    }
    for (const bool up : {false, true}) {
        key(VK_MENU, up);
        key(VK_F2, up);
    }
    EXPECT_EQ(sentBy({{'A'}}), "<F14>a") << "Alt let go first";
}

TEST_F(WindowInput, TheSystemsCaretFollowsTheCursorUnseen) {
    const auto caret = [] {
        GUITHREADINFO state{};
        state.cbSize = sizeof state;
        GetGUIThreadInfo(GetCurrentThreadId(), &state);
        const RECT& at = state.rcCaret;
        return std::pair(state.hwndCaret, Rect{static_cast<int>(at.left), static_cast<int>(at.top),
                                               static_cast<int>(at.right), static_cast<int>(at.bottom)});
    };
    (*form)->TurnOnOffCursor(false);
    (*form)->screen().HideCursor();
    form->writeAt(5, 3, "text");
    const WindowImage before = form->picture();
    (*form)->placeCaret();
    EXPECT_EQ(caret(), std::pair(form->window(), form->cell(9, 3)));
    EXPECT_EQ(form->picture(), before);
    form->setSize({500, 400});
    EXPECT_EQ(caret(), std::pair(form->window(), form->cell(9, 3)));
    {
        const TestForm above = open();
        EXPECT_EQ(caret(), std::pair(above.window(), above.cell(0, 0)));
        (*form)->placeCaret();
        EXPECT_EQ(caret().first, above.window());
        SetFocus(nullptr);
        EXPECT_EQ(caret().first, nullptr);
        form->writeAt(1, 1, "");
    }
    SetFocus(form->window());
    EXPECT_EQ(caret(), std::pair(form->window(), form->cell(1, 1)));
    destroy();
    EXPECT_EQ(caret().first, nullptr);
    reopen();
    EXPECT_EQ(caret().first, form->window());
    DestroyWindow(form->window());
    EXPECT_EQ(caret().first, nullptr);
}

TEST_F(WindowInput, TypedCharactersGoThroughUnchanged) {
    EXPECT_TRUE(IsWindowUnicode(form->window()));
    for (const bool singleByteLoop : {false, true}) {
        host.sent.clear();
        // The last but one takes two units. The code page has none of the last four, but look-alikes.
        for (const wchar_t unit : L"\xE9\x20AC\x416\x398\xD83D\xDE00\x2500") {
            if (unit != 0) typeCharacter(unit);
        }
        singleByteLoop ? pumpSingleByte() : pump();
        EXPECT_EQ(host.sent, "\xE9\x80????") << singleByteLoop;
    }
    host.sent.clear();
    EXPECT_EQ(SendMessageW(form->window(), WM_UNICHAR, UNICODE_NOCHAR, 0), TRUE);
    for (const WPARAM character : {0x398, 0x1F600, 0xE9})
        SendMessageW(form->window(), WM_UNICHAR, character, 0);
    for (const WPARAM unit : {0x398, 0xD83D, 0x61}) SendMessageW(form->window(), WM_IME_CHAR, unit, 0);
    EXPECT_EQ(host.sent, "??\xE9??a");
    host.sent.clear();
    for (int i = 0; i < 3; ++i) key(VK_UP, false);
    EXPECT_EQ(sentBy({{VK_UP}}), "\x1A\x1A\x1A\x1A") << "the key repeats";
    // AltGr: neither what is typed with it nor what comes after it is a Ctrl combination.
    key(VK_CONTROL, false);
    key(VK_RMENU, false);
    pump();
    PostMessageA(form->window(), WM_CHAR, '@', 0);
    key(VK_CONTROL, true);
    key(VK_RMENU, true);
    EXPECT_EQ(sentBy({{'A'}}), "@a");
}

TEST_F(WindowInput, CtrlReleasedElsewhereDoesNotStick) {
    key(VK_CONTROL, false);
    pump();
    {
        const TestForm other = open();
        SetForegroundWindow(other.window());
        pump();
        key(VK_CONTROL, true);
        pump();
        SetForegroundWindow(form->window());
        pump();
    }
    PostMessageA(form->window(), WM_CHAR, 'b', 0);
    EXPECT_EQ(sentBy({{'A'}}), "ba") << "in another window";
    moveToCell(1, 1);
    key(VK_CONTROL, false);
    pump();
    press({{VK_RBUTTON}});
    key(VK_CONTROL, true);
    EXPECT_EQ(sentBy({{VK_ESCAPE}, {'A'}}), "a") << "in a menu";
    host.onInput = [&] { (*form)->Form_LostFocus(); };
    EXPECT_EQ(sentBy({{VK_CONTROL, 'A'}}), "\x01") << "while the host has the key";
}

TEST_F(WindowInput, MenusOpenAndChooseByKeyboard) {
    const Companion companion;
    (*form)->AddRemote(companion.quoted() + "  \"two  words\" -x", "First");
    (*form)->AddRemote(companion.program() + " a  b", "R&D");
    (*form)->AddRemote("no-such-program -x", "Third");
    const std::pair<std::vector<Chord>, std::string> cases[] = {
        {{{VK_MENU, 'R'}, {VK_RETURN}}, " \"two  words\" -x\n" + companion.folder()},
        // Without quotes the program's path is cut at its space; only the second attempt finds the program.
        {{{VK_MENU, 'R'}, {'D'}, {VK_DOWN}, {VK_RETURN}},
         " a  b\n" + std::filesystem::current_path().string()}};
    for (const auto& [chords, told] : cases) {
        EXPECT_EQ(sentBy(chords), "");
        EXPECT_EQ(answerOf(companion), companion.quoted() + told);
    }
    const std::string text = boxAfter([] { press({{VK_MENU, 'R'}, {VK_UP}, {VK_RETURN}}); });
    EXPECT_TRUE(text.starts_with("Unable to start Program: no-such-program -x\nError: ")) << text;
    (*form)->ClearRemote();
    EXPECT_EQ(sentBy({{VK_MENU, 'R'}, {VK_ESCAPE}, {VK_MENU, 'P'}, {VK_ESCAPE}, {VK_ESCAPE}, {'A'}}), "a");
    char item[100] = "";
    GetMenuStringA(GetSubMenu(GetMenu(form->window()), 2), 5, item, sizeof item, MF_BYPOSITION);
    EXPECT_STREQ(item, "No printers");
}

TEST_F(WindowInput, ProgramsOfTheKnowledgeBaseStartOnlyAfterAYes) {
    const Companion companion;
    (*form)->AddKB(companion.quoted() + " from  here & more", "&Manual");
    const std::vector<Chord> choose{{VK_MENU, 'K'}, {VK_DOWN}, {VK_RETURN}};
    std::string question;
    const auto ask = [&](std::function<bool()> answer) {
        question.clear();
        tryUntilDone(std::move(answer));
        press(choose);
        EXPECT_TRUE(pumpUntil([&] { return !question.empty() && messageBox() == nullptr; }));
    };
    ask([&] {
        if (!readBox(question)) return false;
        // "&" has no meaning in it.
        EXPECT_NE(GetWindowLongA(GetDlgItem(messageBox(), 0xFFFF), GWL_STYLE) & SS_NOPREFIX, 0);
        return press({{VK_RETURN}}), true;
    });
    EXPECT_TRUE(question.ends_with("\n\n" + companion.quoted() + " from  here & more")) << question;
    // What the remote side shows meanwhile stays behind the question.
    ask([&] {
        if (!readBox(question)) return false;
        (*form)->ShowHelpBox(1, 0, 1, 78, 24, "Press Yes!");
        const Rect place = rectangleOf(messageBox());
        const HWND top = WindowFromPoint({(place.left + place.right) / 2, (place.top + place.bottom) / 2});
        EXPECT_EQ(GetAncestor(top, GA_ROOT), messageBox());
        return closedBox(question, IDNO);
    });
    std::string none;
    EXPECT_FALSE(companion.tells(none)) << "No is what Return answers";
    ask([&] { return closedBox(question, IDYES); });
    EXPECT_EQ(answerOf(companion), companion.quoted() + " from  here & more\n" + companion.folder());
    // The window's end takes the question with it.
    ask([&] {
        if (!readBox(question)) return false;
        return destroy(), true;
    });
    EXPECT_EQ(countTerminalWindows(), 0);
    EXPECT_FALSE(companion.tells(none));
}

TEST_F(WindowInput, ThePlatformTakesTheLongestCommands) {
    const Companion companion;
    for (const std::string& program :
         {std::string(900, 'x'), "C:\\" + std::string(890, 'x') + ".exe",
          "C:\\" + std::string(896, '\\') + "x", '"' + std::string(900, 'x') + '"'}) {
        for (const std::size_t rest : {0, 7000}) {
            (*form)->ClearRemote();
            (*form)->AddRemote(program + ' ' + std::string(rest, '-'), "Long");
            const std::string text = boxAfter([&] { (*form)->mnuRemoteConnection_Click(0); });
            EXPECT_TRUE(text.starts_with("Unable to start Program: "))
                << program.substr(0, 10) << rest << text;
        }
    }
    (*form)->ClearRemote();
    (*form)->AddRemote(companion.quoted() + ' ' + std::string(7900 - companion.quoted().size(), 'x'), "Long");
    (*form)->mnuRemoteConnection_Click(0);
    EXPECT_GT(answerOf(companion).size(), 7900U);
}

TEST_F(WindowInput, DragCopyAndPaste) {
    const Companion companion;
    form->writeAt(4, 2, "\xC4\xBA\x82");
    const auto shown = [&](int column, int row) {
        return form->picture().all(form->cell(column, row), kWhite);
    };
    moveToCell(4, 3);
    click(MOUSEEVENTF_LEFTDOWN);
    moveTo(-5, -8);
    EXPECT_TRUE(pumpUntil([&] { return shown(4, 3) && shown(0, 0) && !shown(5, 3); }));
    moveTo(1000, 700);
    EXPECT_TRUE(pumpUntil([&] { return shown(4, 3) && !shown(0, 0) && shown(79, 24); }));
    moveToCell(6, 2);
    EXPECT_TRUE(pumpUntil([&] { return shown(4, 3) && shown(6, 3) && !shown(7, 3) && !shown(79, 24); }));
    click(MOUSEEVENTF_LEFTUP);
    moveToCell(3, 2);
    EXPECT_EQ(sentBy({{VK_RBUTTON}, {'C'}}), "");
    EXPECT_FALSE(shown(4, 3));
    companion.start("clipboard");
    EXPECT_EQ(answerOf(companion), "-\xA6\xE9   \0\u2500\u2551\u00E9   "s);
    EXPECT_EQ(sentBy({{VK_APPS}, {'P'}, {VK_CONTROL, 'V'}}), "\xC4\xBA\x82   \xC4\xBA\x82   ");
    (*form)->PasteBytes(false);
    EXPECT_EQ(sentBy({{VK_APPS}, {'P'}, {VK_CONTROL, 'V'}}), "??\xE9   ??\xE9   ");
}

TEST_F(WindowInput, CopiedBytesComeBackAsTheyWere) {
    std::string all = "\r\n" + std::string(256, '\0');
    std::iota(all.begin() + 2, all.end(), '\0');
    EXPECT_TRUE(Clipboard(form->window()).setText(all));
    EXPECT_EQ(Clipboard(form->window()).text(true), all);
}

TEST_F(WindowInput, TextOfOtherProgramsIsPastedWithoutLookAlikes) {
    const std::pair<std::wstring, std::string> cases[] = {{L"\x398\xE9\x20AC\x2500\xFF21"
                                                           L"a\0"s,
                                                           "?\xE9\x80??a"},
                                                          {L"\xD83D\xDE00|\xD83D|\xDE00\0"s, "?|?|?"},
                                                          {L"a\0b\0"s, "a"},
                                                          {L"\0"s, ""}};
    // What does not hold as many bytes as it says is none of the terminal's.
    for (const std::string& foreign : {""s, "\x01"s, "\x05\0\0\0four"s, "\xFF\xFF\xFF\xFF"s}) {
        for (const auto& [text, pasted] : cases) {
            putOnClipboard(text, CF_UNICODETEXT);
            if (!foreign.empty()) putOnClipboard(foreign, Clipboard::bytesFormat(), true);
            EXPECT_EQ(sentBy({{VK_CONTROL, 'V'}}), pasted);
        }
    }
}

TEST_F(WindowInput, AClipboardThatAnotherProgramHoldsKeepsItsText) {
    const Companion companion;
    form->writeAt(0, 1, "new");
    putOnClipboard("old");
    companion.start("clipboard 1000");
    EXPECT_EQ(answerOf(companion), "old\0old"s);
    mark(1, 3);
    EXPECT_EQ(sentBy({{VK_CONTROL, 'C'}, {VK_CONTROL, 'V'}}), "");
    EXPECT_TRUE(pumpUntil([&] { return sentBy({{VK_CONTROL, 'V'}}) == "old"; }));
    mark(1, 3);
    EXPECT_EQ(sentBy({{VK_CONTROL, 'C'}, {VK_CONTROL, 'V'}}), "new");
}

TEST_F(WindowInput, ALargePasteArrivesWholeAndSoon) {
    const std::string text = std::string(1 << 20, 'x') + '!';
    putOnClipboard(text);
    const DWORD start = GetTickCount();
    EXPECT_TRUE(sentBy({{VK_CONTROL, 'V'}}) == text);
    EXPECT_LT(GetTickCount() - start, 2000U);
}

TEST_F(WindowInput, WindowsMayGoWhileTheirInputIsHandled) {
    putOnClipboard("text");
    const struct {
        int held, key, then;
        std::string sent;
    } cases[] = {{0, VK_UP, 'A', "\x1A<closed>"},
                 {0, 'A', VK_UP, "a<closed>"},
                 {VK_MENU, VK_F4, 'A', "<F16><closed>"},
                 {VK_CONTROL, 'V', 'A', "text<closed>"},
                 {0, VK_RBUTTON, 'P', "text<closed>"},
                 {VK_MENU, 'F', 'X', "<closed>"},
                 {VK_MENU, VK_SPACE, 'C', "<closed>"},
                 // The window is destroyed under the open menu.
                 {0, VK_RBUTTON, 0, "<closed>"},
                 {VK_MENU, 'F', 0, "<closed>"}};
    for (const auto& c : cases) {
        reopen();
        moveToCell(1, 1);
        host.onInput = [&] { destroy(); };
        if (c.then == 0) tryUntilDone([&] { return inMenu() && (destroy(), true); });
        press({{c.held, c.key}, {c.then}});
        EXPECT_TRUE(pumpUntil([] { return countTerminalWindows() == 0; })) << c.held << '+' << c.key;
        host.onInput = [] {};
        if (form) (*form)->Unload();
        EXPECT_EQ(host.sent, c.sent) << c.held << '+' << c.key;
    }
}

}  // namespace
}  // namespace kavrelon
