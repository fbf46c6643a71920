// The members of the current window, as a host and as a late-bound program reach them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/EscapeRows.h"
#include "tests/windows/ComTestSupport.h"

namespace kavrelon {
namespace {

constexpr HRESULT kOutside = runtimeError(9);

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

class ComWindow : public ComPlugIn {
  protected:
    void start() {
        ComPlugIn::start();
        ASSERT_EQ(main->OnConnection(), S_OK);
    }
    void receive(std::string_view text) {
        for (const unsigned char ch : text) receiver->ReceiveData(ch);
    }
    std::wstring screenText(VARIANT first, VARIANT last, HRESULT expected = S_OK) {
        Bstr text;
        EXPECT_EQ(window->ScreenText(first, last, text.put()), expected);
        EXPECT_TRUE(expected == S_OK || text.get() == nullptr);
        return std::wstring(text.view());
    }
    std::string attributes(long column, long row) {
        VARIANT value;
        if (window->CellAttributes(column, row, &value) != S_OK) return "error";
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
        all += closed == 0 ? "|never" : "|closed";
        all += IsWindow(reinterpret_cast<HWND>(handle)) ? " window" : handle == 0 ? " none" : " wrong";
        return all;
    }
};

TEST_F(ComWindow, NeedsAWindowAndBearsAClosedOne) {
    const auto outcomes = [&] {
        VARIANT_BOOL flag = VARIANT_TRUE;
        Bstr text;
        VARIANT cell;
        return std::vector<HRESULT>{window->get_PasteOk(&flag),
                                    window->put_PaintOn(VARIANT_FALSE),
                                    window->put_CursorX(5),
                                    window->put_Caption(Bstr(L"x").get()),
                                    window->ProcessCmd(Bstr(L"CUTOK 1").get(), nullptr),
                                    window->ShowTitleBar(VARIANT_FALSE),
                                    window->Redrawscreen(VARIANT_TRUE),
                                    window->ResetScreenDefaults(),
                                    window->Copy(),
                                    window->Paste(),
                                    window->ScreenText(valueOf(7), leftOut(), text.put()),
                                    window->CellAttributes(1, 1, &cell)};
    };
    EXPECT_THAT(outcomes(), testing::Each(kObjectNotSet));
    EXPECT_EQ(takeErrorInfo(),
              "Object variable or With block variable not set (CellAttributes) <kavrelon.clsTerminal>");
    start();
    EXPECT_EQ(allRead(), "11011110101 0 0 80 25|profile|Z:\\nowhere\\kavrelon.ini||Terminal|never window");
    main->OnClose();
    EXPECT_EQ(allRead(), "11011110011 0 0 80 25|profile|Z:\\nowhere\\kavrelon.ini||Terminal|closed window");

    long handle = 0;
    window->get_hWnd(&handle);
    SendMessageW(reinterpret_cast<HWND>(handle), WM_CLOSE, 0, 0);
    EXPECT_EQ(allRead(), "00000000000 0 0 0 0|||||never none");
    EXPECT_THAT(outcomes(), testing::Each(S_OK));
    EXPECT_EQ(screenText(leftOut(), valueOf(500)), L"");
    EXPECT_EQ(attributes(500, 500), "");

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

    Bstr two(L"two");
    VARIANT text = valueOf(0);
    text.vt = VT_BSTR;
    text.bstrVal = two.get();
    VARIANT large = valueOf(0);
    large.vt = VT_R8;
    large.dblVal = 1e10;
    screenText(valueOf(2), valueOf(1), runtimeError(5));
    screenText(text, leftOut(), runtimeError(13));
    screenText(leftOut(), large, runtimeError(6));
    for (const long outside : {-1L, 0L, 26L}) {
        screenText(valueOf(outside), leftOut(), kOutside);
        screenText(leftOut(), valueOf(outside), kOutside);
        EXPECT_EQ(attributes(1, outside), "error");
    }
    EXPECT_EQ(attributes(0, 1), "error");
    EXPECT_EQ(attributes(81, 1), "error");
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
    for (const short refused : {short{0}, short{-1}, short{1639}}) {
        EXPECT_EQ(window->put_ScreenFontSize(refused), runtimeError(380));
    }
    window->get_ScreenFontSize(&after);
    EXPECT_EQ(after, 7);
}

TEST_F(ComWindow, TellsWhichCommandsItKnows) {
    start();
    const auto processed = [&](const wchar_t* command, VARIANT flag) {
        VARIANT* const given = flag.vt == VT_ERROR ? nullptr : &flag;
        const HRESULT result = window->ProcessCmd(Bstr(command).get(), given);
        return std::pair(result, given != nullptr && flag.vt == VT_BOOL && flag.boolVal != VARIANT_FALSE);
    };
    VARIANT empty;
    VariantInit(&empty);
    VARIANT_BOOL place = VARIANT_FALSE;
    VARIANT reference;
    reference.vt = VT_BOOL | VT_BYREF;
    reference.pboolVal = &place;
    const std::wstring megabyte(1 << 20, L'x');
    EXPECT_EQ(processed(L"IMAGECLEAR 1", empty), std::pair(S_OK, true));
    EXPECT_EQ(processed(L"CUTOK 0", empty), std::pair(S_OK, false));
    EXPECT_EQ(processed(megabyte.c_str(), empty), std::pair(S_OK, false));
    EXPECT_EQ(processed(L"", leftOut()), std::pair(S_OK, false));
    EXPECT_EQ(processed(L"imageclear 1", reference), std::pair(S_OK, false));
    EXPECT_EQ(place, VARIANT_TRUE);
    EXPECT_EQ(processed(L"PASTEOK 0", valueOf(0)), std::pair(runtimeError(13), false));
    VARIANT_BOOL paste = VARIANT_FALSE;
    window->get_PasteOk(&paste);
    EXPECT_EQ(paste, VARIANT_TRUE) << "refused before it is carried out";
}

TEST_F(ComWindow, MayBeAskedFromWithinACallback) {
    start();
    std::wstring seen;
    parent->onCall = [&] {
        if (parent->calls.back() == "command INIT") seen = screenText(valueOf(1), valueOf(1));
        if (parent->calls.back() == "closed") main->DestroyClass();
    };
    receive("here");
    main->OnLogin();
    EXPECT_EQ(seen.substr(0, 5), L"here ");
    long handle = 0;
    window->get_hWnd(&handle);
    SendMessageW(reinterpret_cast<HWND>(handle), WM_CLOSE, 0, 0);
    EXPECT_EQ(window->Copy(), kObjectNotSet);
}

}  // namespace
}  // namespace kavrelon
