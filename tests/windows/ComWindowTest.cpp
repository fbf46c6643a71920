// The members of the current window, as a host and as a late-bound program reach them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "headless/EscapeRows.h"
#include "tests/windows/ComTestSupport.h"

namespace kavrelon {
namespace {

VARIANT leftOut() {
    VARIANT value;
    value.vt = VT_ERROR;
    value.scode = DISP_E_PARAMNOTFOUND;
    return value;
}

VARIANT valueOf(long number) {
    VARIANT value;
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

/// In this minute.
bool isNow(DATE date) {
    SYSTEMTIME time{};
    GetLocalTime(&time);
    DATE now = 0;
    SystemTimeToVariantTime(&time, &now);
    return std::abs(now - date) < 1.0 / (24 * 60);
}

class ComWindow : public ComPlugIn {
  protected:
    void start() {
        ComPlugIn::start();
        ASSERT_EQ(main->OnConnection(), S_OK);
    }
    void receive(std::string_view text) {
        for (const unsigned char ch : text) receiver->ReceiveData(ch);
    }
    HWND handle() {
        long value = 0;
        EXPECT_EQ(window->get_hWnd(&value), S_OK);
        return reinterpret_cast<HWND>(value);
    }
    void closeByUser() { SendMessageW(handle(), WM_CLOSE, 0, 0); }
    std::wstring screenText(VARIANT first, VARIANT last) {
        Bstr text;
        EXPECT_EQ(window->ScreenText(first, last, text.put()), S_OK);
        return std::wstring(text.view());
    }
    std::string attributes(long column, long row) {
        VARIANT value;
        EXPECT_EQ(window->CellAttributes(column, row, &value), S_OK);
        std::string codes;
        if (value.vt == (VT_ARRAY | VT_VARIANT)) {
            for (LONG i = 0; i < 3; ++i) {
                VARIANT code;
                SafeArrayGetElement(value.parray, &i, &code);
                codes += std::to_string(code.iVal) + ' ';
            }
        }
        VariantClear(&value);
        return codes;
    }
    /// Every member that reads, in one line.
    std::string allRead() {
        using Flag = HRESULT (STDMETHODCALLTYPE ::ITerminalWindow::*)(VARIANT_BOOL*);
        using Number = HRESULT (STDMETHODCALLTYPE ::ITerminalWindow::*)(short*);
        using Text = HRESULT (STDMETHODCALLTYPE ::ITerminalWindow::*)(BSTR*);
        using W = ::ITerminalWindow;
        std::string all;
        for (const Flag flag : {&W::get_PasteOk, &W::get_CutOk, &W::get_CRtoCRLF, &W::get_InputOn,
                                &W::get_PaintOn, &W::get_AutoSize, &W::get_AutoWrap, &W::get_UseMemoryDC,
                                &W::get_SessionOpen, &W::get_SessionClosed, &W::get_PasteBytes}) {
            VARIANT_BOOL value = 77;
            EXPECT_EQ((window.get()->*flag)(&value), S_OK);
            EXPECT_EQ((window.get()->*flag)(nullptr), E_POINTER);
            all += value == VARIANT_TRUE ? '1' : value == VARIANT_FALSE ? '0' : '?';
        }
        for (const Number number :
             {&W::get_CursorX, &W::get_CursorY, &W::get_CharsPerLine, &W::get_LinesPerPage}) {
            short value = 77;
            EXPECT_EQ((window.get()->*number)(&value), S_OK);
            all += ' ' + std::to_string(value);
        }
        for (const Text text :
             {&W::get_ConnectionProfile, &W::get_IniFile, &W::get_SelectionText, &W::get_Caption}) {
            Bstr value(L"old");
            EXPECT_EQ((window.get()->*text)(value.put()), S_OK);
            all += '|' + toAnsi(value.view());
        }
        DATE closed = 77;
        long handle = 77;
        EXPECT_EQ(window->get_CloseDate(&closed), S_OK);
        EXPECT_EQ(window->get_hWnd(&handle), S_OK);
        all += closed == 0 ? "|never" : isNow(closed) ? "|closed" : "|some time";
        all += IsWindow(reinterpret_cast<HWND>(handle)) ? " window" : handle == 0 ? " none" : " wrong";
        return all;
    }
};

TEST_F(ComWindow, NeedsAWindowAndBearsAClosedOne) {
    const auto outcomes = [&] {
        VARIANT_BOOL flag = VARIANT_TRUE;
        Bstr text;
        VARIANT cell, noFlag = valueOf(7);
        return std::vector<HRESULT>{window->get_PasteOk(&flag),
                                    window->put_PaintOn(VARIANT_FALSE),
                                    window->put_CursorX(5),
                                    window->put_Caption(Bstr(L"x").get()),
                                    window->ProcessCmd(Bstr(L"CUTOK 1").get(), &noFlag),
                                    window->ShowTitleBar(VARIANT_FALSE),
                                    window->Redrawscreen(VARIANT_TRUE),
                                    window->ResetScreenDefaults(),
                                    window->Copy(),
                                    window->Paste(),
                                    window->put_ScreenFontSize(0),
                                    window->ScreenText(valueOf(-7), leftOut(), text.put()),
                                    window->CellAttributes(0, 1, &cell)};
    };
    EXPECT_THAT(outcomes(), testing::Each(kObjectNotSet));
    EXPECT_EQ(takeErrorInfo(),
              "Object variable or With block variable not set (CellAttributes) <kavrelon.clsTerminal>");
    start();
    EXPECT_EQ(allRead(), "11011110101 0 0 80 25|profile|Z:\\nowhere\\kavrelon.ini||Terminal|never window");
    main->OnClose();
    EXPECT_EQ(allRead(), "11011110011 0 0 80 25|profile|Z:\\nowhere\\kavrelon.ini||Terminal|closed window");

    closeByUser();
    EXPECT_EQ(allRead(), "00000000000 0 0 0 0|||||never none");
    EXPECT_THAT(outcomes(), testing::Each(S_OK));

    main->DestroyClass();
    EXPECT_THAT(outcomes(), testing::Each(kObjectNotSet));
}

TEST_F(ComWindow, ReadsTheScreen) {
    start();
    receive("\xC9\xCD\x82x");
    process(*table, rows::kCursorPosition, {L"24", L"78"});
    process(*table, rows::kSetAttribute, {L"1;33;44"});
    receive("end");
    const std::wstring top = L"\u2554\u2550\u00E9x" + std::wstring(76, L' ');
    const std::wstring bottom = std::wstring(77, L' ') + L"end";
    EXPECT_EQ(screenText(leftOut(), valueOf(1)), top);
    EXPECT_EQ(screenText(valueOf(24), leftOut()), bottom + L"\r\n" + std::wstring(80, L' '));
    EXPECT_EQ(screenText(leftOut(), leftOut()).size(), 25U * 80 + 24 * 2);
    EXPECT_EQ(attributes(80, 24), "33 44 1 ");
}

TEST_F(ComWindow, TellsWhatMakesNoSense) {
    start();
    const std::string before = allRead();
    const Bstr two(L"two");
    VARIANT noNumber = valueOf(0), large = valueOf(0);
    noNumber.vt = VT_BSTR;
    noNumber.bstrVal = two.get();
    large.vt = VT_R8;
    large.dblVal = 1e10;
    // What a program sees of a mistake.
    const auto told = [](HRESULT result) {
        return std::to_string(result - runtimeError(0)) + ' ' + takeErrorInfo();
    };
    const auto rows = [&](VARIANT first, VARIANT last) {
        Bstr text;
        const HRESULT result = window->ScreenText(first, last, text.put());
        EXPECT_EQ(text.get(), nullptr);
        return told(result);
    };
    const auto cell = [&](long column, long row) {
        VARIANT value = valueOf(7);
        const HRESULT result = window->CellAttributes(column, row, &value);
        EXPECT_EQ(value.vt, VT_EMPTY);
        return told(result);
    };
    const auto fontSize = [&](short points) { return told(window->put_ScreenFontSize(points)); };
    const std::string outside = "9 Subscript out of range ", kept = "380 Invalid property value ";
    const std::pair<std::string, std::string> mistakes[] = {
        {rows(noNumber, leftOut()), "13 Type mismatch (ScreenText)"},
        {rows(leftOut(), large), "6 Overflow (ScreenText)"},
        {rows(valueOf(2), valueOf(1)), "5 Invalid procedure call or argument (ScreenText)"},
        {rows(valueOf(-1), leftOut()), outside + "(ScreenText)"},
        {rows(leftOut(), valueOf(0)), outside + "(ScreenText)"},
        {rows(leftOut(), valueOf(26)), outside + "(ScreenText)"},
        {cell(0, 1), outside + "(CellAttributes)"},
        {cell(81, 1), outside + "(CellAttributes)"},
        {cell(1, 0), outside + "(CellAttributes)"},
        {cell(1, 26), outside + "(CellAttributes)"},
        {fontSize(0), kept + "(ScreenFontSize)"},
        {fontSize(-1), kept + "(ScreenFontSize)"},
        {fontSize(1639), kept + "(ScreenFontSize)"},
        {told(window->ProcessCmd(Bstr(L"PASTEOK 0").get(), &large)), "13 Type mismatch (ProcessCmd)"},
    };
    for (const auto& [seen, expected] : mistakes) EXPECT_EQ(seen, expected + " <kavrelon.clsTerminal>");
    EXPECT_EQ(allRead(), before);
}

TEST_F(ComWindow, WritesProperties) {
    start();
    EXPECT_EQ(window->put_CursorX(500), S_OK);
    EXPECT_EQ(window->put_CursorY(-3), S_OK);
    EXPECT_EQ(window->put_Caption(Bstr(L"caf\u00E9 \u0398").get()), S_OK);
    EXPECT_EQ(window->put_CutOk(VARIANT_FALSE), S_OK);
    EXPECT_EQ(window->put_CRtoCRLF(VARIANT_TRUE), S_OK);
    EXPECT_EQ(window->put_UseMemoryDC(VARIANT_TRUE), S_OK);
    EXPECT_EQ(allRead(), "10111111101 80 0 80 25|profile|Z:\\nowhere\\kavrelon.ini||caf\xE9 ?|never window");
    short before = 0;
    short after = 0;
    window->get_ScreenFontSize(&before);
    EXPECT_EQ(window->put_ScreenFontSize(static_cast<short>(before + 1)), S_OK);
    window->get_ScreenFontSize(&after);
    EXPECT_EQ(after, before) << "the font follows the window";
    EXPECT_EQ(window->put_AutoSize(VARIANT_FALSE), S_OK);
    EXPECT_EQ(window->put_ScreenFontSize(7), S_OK);
    window->get_ScreenFontSize(&after);
    EXPECT_EQ(after, 7);
}

TEST_F(ComWindow, CarriesOutCommandsAndIgnoresTheRest) {
    start();
    VARIANT empty;
    VariantInit(&empty);
    const std::wstring megabyte(1 << 20, L';');
    const struct {
        std::wstring command;
        bool processed, paste, cut;
    } steps[] = {
        {L"imageclear 1", true, true, true},
        {L"IMAGE", true, true, true},
        {L"IMAGE 1;99999;x;;-1;;;", true, true, true},
        {L"IMAGE 1;1;80;25;" + megabyte, true, true, true},
        {L"IMAGE 1;1;80;25;1;" + megabyte, true, true, true},
        {std::wstring(L"IMAGECLEAR 1\0", 13), true, true, true},
        {L"PASTEOK 0", false, false, true},
        {L"CutOk", false, false, false},
        {L"PASTEOK 1", false, true, false},
        {std::wstring(L"CUTOK 1\0", 8), false, true, false},
        {L"CUTOK 1", false, true, true},
        {std::wstring(L"CUTOK\0 0", 8), false, true, true},
        {L" CUTOK 0", false, true, true},
        {megabyte, false, true, true},
        {L"", false, true, true},
    };
    for (const auto& [command, processed, paste, cut] : steps) {
        VARIANT flag = empty;
        EXPECT_EQ(window->ProcessCmd(Bstr(command).get(), &flag), S_OK);
        EXPECT_EQ(flag.vt == VT_BOOL && flag.boolVal == VARIANT_TRUE, processed)
            << toAnsi(command.substr(0, 40));
        EXPECT_EQ(allRead().substr(0, 2), std::string(paste ? "1" : "0") + (cut ? "1" : "0"))
            << toAnsi(command.substr(0, 40));
    }
    VARIANT_BOOL place = VARIANT_FALSE;
    VARIANT reference;
    reference.vt = VT_BOOL | VT_BYREF;
    reference.pboolVal = &place;
    EXPECT_EQ(window->ProcessCmd(Bstr(L"IMAGE").get(), &reference), S_OK);
    EXPECT_EQ(place, VARIANT_TRUE);
    EXPECT_EQ(window->ProcessCmd(nullptr, nullptr), S_OK);
}

TEST_F(ComWindow, MayBeCalledFromWithinACallback) {
    start();
    receive("here");
    std::vector<std::wstring> seen;
    parent->onCall = [&] {
        if (parent->calls.back() == "closed") {
            main->DestroyClass();
            return;
        }
        if (parent->calls.back() == "data k") {
            // Another window is the current one from here on.
            EXPECT_EQ(process(*table, rows::kNewScreen, {}), S_OK);
            EXPECT_EQ(window->put_CursorX(3), S_OK);
            EXPECT_EQ(window->ProcessCmd(Bstr(L"IMAGE 1;1;9;9;1;x.png").get(), nullptr), S_OK);
            EXPECT_EQ(window->ShowTitleBar(VARIANT_FALSE), S_OK);
            EXPECT_EQ(window->Redrawscreen(VARIANT_TRUE), S_OK);
            EXPECT_EQ(window->Paste(), S_OK);
            receive("above");
        }
        seen.push_back(screenText(valueOf(1), valueOf(1)).substr(0, 9));
    };
    main->OnLogin();
    PostMessageW(handle(), WM_CHAR, 'k', 0);
    EXPECT_EQ(receiver->ReceiveEnd(), S_OK);
    EXPECT_THAT(seen, testing::ElementsAre(L"here     ", L"   above "));
    process(*table, rows::kCloseScreen, {});
    EXPECT_EQ(screenText(valueOf(1), valueOf(1)).substr(0, 9), L"here     ");
    PostMessageW(handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(receiver->ReceiveEnd(), S_OK);
    EXPECT_EQ(window->Copy(), kObjectNotSet);
}

}  // namespace
}  // namespace kavrelon
