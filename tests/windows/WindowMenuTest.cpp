#include <algorithm>

#include "support/win32/ReplacedImports.h"
#include "tests/windows/WindowInputSupport.h"

namespace kavrelon {
namespace {

std::string caption(HMENU menu, int position) {
    char text[100] = "";
    GetMenuStringA(menu, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
    return text;
}

int find(HMENU menu, const std::string& name) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        std::string text = caption(menu, i);
        std::erase(text, '&');
        if (text == name) return i;
    }
    return -1;
}

class WindowMenu : public WindowInput {
  protected:
    static HMENU menu(const TestForm& form, const char* name) {
        const HMENU bar = GetMenu(form.window());
        return GetSubMenu(bar, find(bar, name));
    }
    static void click(const TestForm& form, HMENU menu, int position) {
        SendMessageA(form.window(), WM_COMMAND, GetMenuItemID(menu, position), 0);
    }
    /// The position of the menu's only checked entry, -1 when it has none or several.
    static int checked(HMENU menu) {
        int result = -1;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            if ((GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_CHECKED) == 0) continue;
            if (result >= 0) return -1;
            result = i;
        }
        return result;
    }
};

TEST_F(WindowMenu, ChoicesAreCheckedStoredAndReadBack) {
    const struct {
        const char *menu, *section, *key;
        std::string stored;
    } cases[] = {{"Font", "Misc", "FontStyle", "12345678"}, {"Printer", "Printer", "SpoolType", "0231"}};
    for (const auto& each : cases) {
        form->writeAt(0, 0, "text");
        const HMENU entries = menu(*form, each.menu);
        EXPECT_EQ(checked(entries), 0);
        for (int entry = static_cast<int>(each.stored.size()) - 1; entry >= 0; --entry) {
            click(*form, entries, entry);
            EXPECT_EQ(platform.profileFile().read(settings, each.section, each.key, "none", 100),
                      each.stored.substr(static_cast<std::size_t>(entry), 1));
            EXPECT_EQ(checked(entries), entry);
            EXPECT_EQ(checked(menu(open(), each.menu)), entry);
        }
        EXPECT_TRUE(form->isPainted());
    }
}

TEST_F(WindowMenu, TheScreenWidthChangesAndItsCaptionWithIt) {
    const HMENU file = menu(*form, "File");
    (*form)->screen().CharsPerLine(132);
    form->writeAt(100, 3, "\xDB");
    (*form)->screen().CharsPerLine(80);
    click(*form, file, find(file, "132 Char per Line"));
    EXPECT_EQ((*form)->screen().CharsPerLine(), 132);
    const WindowImage wide = form->picture();
    EXPECT_LE(form->cell(131, 0).right, wide.width());
    EXPECT_FALSE(wide.all(form->cell(100, 3), kBlack));
    EXPECT_TRUE(form->isPainted());
    click(*form, file, find(file, "80 Char per Line"));
    EXPECT_EQ((*form)->screen().CharsPerLine(), 80);
    EXPECT_GE(find(file, "132 Char per Line"), 0);
}

TEST_F(WindowMenu, ClearingTheClipboardEmptiesIt) {
    putOnClipboard("text");
    const HMENU file = menu(*form, "File");
    click(*form, file, find(file, "Clear Clipboard"));
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_TEXT));
}

TEST_F(WindowMenu, AFloodOfEntriesIsBoundedAndItsMenuOpensAtOnce) {
    constexpr std::size_t kMegabyte = 1 << 20;
    const auto openMenu = [&] {
        const HMENU popup = menu(*form, "Knowledge Base");
        SendMessageA(form->window(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 3);
    };
    openMenu();
    const std::size_t before = committedBytes();
    for (int i = 0; i < 100000; ++i) {
        (*form)->AddKB("http://localhost/kb/" + std::to_string(i), "Entry number " + std::to_string(i));
    }
    EXPECT_LT(committedBytes(), before + 8 * kMegabyte);
    const DWORD start = GetTickCount();
    openMenu();
    EXPECT_LT(GetTickCount() - start, 500U);
    (*form)->ClearKB();
    EXPECT_LT(committedBytes(), before + kMegabyte);
}

std::string installedFace;
int searches = 0;

int WINAPI enumerateFaces(HDC, LOGFONTA* wanted, FONTENUMPROCA found, LPARAM value, DWORD) {
    ++searches;
    return wanted->lfFaceName == installedFace ? found(wanted, nullptr, TRUETYPE_FONTTYPE, value) : 1;
}

TEST_F(WindowMenu, FontsThatAreNotInstalledSaySoAndCanStillBeChosen) {
    const HMENU fonts = menu(*form, "Font");
    click(*form, fonts, 6);
    const ReplacedImports replaced(GetModuleHandleA(nullptr),
                                   {{"EnumFontFamiliesExA", reinterpret_cast<void*>(enumerateFaces)}});
    ASSERT_EQ(replaced.count(), 1U);
    const auto open = [&](HMENU popup) {
        searches = 0;
        SendMessageA(form->window(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 1);
        return caption(fonts, 6) + '|' + caption(fonts, 7);
    };
    installedFace = "HyperFont Dk.";
    EXPECT_EQ(open(menu(*form, "File")), "&HyperFont Light|HyperFont &Dark");
    EXPECT_EQ(searches, 0);
    EXPECT_EQ(open(fonts), "&HyperFont Light\tnot installed|HyperFont &Dark");
    EXPECT_EQ(searches, 8);
    EXPECT_EQ(checked(fonts), 6);
    EXPECT_EQ(GetMenuState(fonts, 6, MF_BYPOSITION) & MF_GRAYED, 0U);
    installedFace = "HyperFont Lt.";
    EXPECT_EQ(open(fonts), "&HyperFont Light|HyperFont &Dark\tnot installed");
    EXPECT_EQ(checked(fonts), 6);
}

}  // namespace
}  // namespace kavrelon
