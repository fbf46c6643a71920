#include <set>
#include <string>
#include <utility>

#include "terminal/CommandText.h"
#include "terminal/IniFile.h"
#include "terminal/MenuItems.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

class MenuTest : public ConnectedTest {
  protected:
    HeadlessPrinters& printers = platform.headlessPrinters;

    /// The items that a menu gets when it opens.
    std::vector<MenuItem> opened(BarMenu menu) const { return passingItems(menu, form()); }
    static std::vector<MenuItem> bar() {
        std::vector<MenuItem> items;
        items.reserve(kBarCaptions.size());
        for (const auto& [text, accessKey] : kBarCaptions)
            items.push_back({.caption = text, .accessKey = accessKey});
        return items;
    }
    void chooseLast(BarMenu menu) const { choose(opened(menu).back().command, form()); }
};

TEST_F(MenuTest, EachItemHasItsOwnCommandHoweverManyThereAre) {
    for (int i = 1; i <= 17000; ++i) {
        form().AddKB("http://" + std::to_string(i), "Page");
        form().AddRemote("tool" + std::to_string(i), "Tool");
        printers.installed.push_back("Printer " + std::to_string(i));
    }
    std::vector<MenuItem> items = mnuRightClick(true, true);
    for (std::size_t menu = 0; menu < kBarCaptions.size(); ++menu) {
        for (const auto& part : {lastingItems(BarMenu(menu)), opened(BarMenu(menu))})
            items.insert(items.end(), part.begin(), part.end());
    }
    std::set<MenuCommand> commands;
    for (const MenuItem& item : items) {
        if (!item.enabled || item.command == MenuCommand::Separator) continue;
        EXPECT_TRUE(commands.insert(item.command).second) << item.caption;
    }
    EXPECT_EQ(commands.size(), 3U + 6 + 8 + 4 + 500 + 1000 + 1000);

    const int before = window().checkedFontEntry();
    for (const int stray :
         {0, 99, 106, 149, 153, 200, 209, 299, 304, 900, 950, 999, 2000, 17000, 21000, 36000, 65535}) {
        ASSERT_FALSE(commands.contains(MenuCommand(stray)));
        choose(MenuCommand(stray), form());
    }
    EXPECT_TRUE(window().failures().empty() && window().checkedFontEntry() == before);
    choose(MenuCommand::mnKnowledgeBaseLink + 999, form());
    choose(MenuCommand::mnuRemoteConnection + 999, form());
    const auto& starts = platform.headlessLauncher.shellStarts;
    ASSERT_EQ(starts.size(), 2U);
    EXPECT_EQ(starts[0].program + ' ' + starts[1].program, "http://999 tool1000");
}

TEST_F(MenuTest, HostFilledMenusAreBounded) {
    const std::string long201(201, 'x');
    form().AddRemote("tool", std::string(200, 'x'));
    form().AddRemote("tool", long201);
    EXPECT_EQ(opened(BarMenu::mnuRemote)[0].caption, std::string(200, 'x'));
    EXPECT_EQ(opened(BarMenu::mnuRemote)[1].caption, std::string(197, 'x') + "...");
    for (int i = 0; i < 17000; ++i) form().AddKB("page", "Page " + std::to_string(i));
    for (int i = 0; i < 17000; ++i) form().AddRemote(std::string(9000, 'x'), "Tool");
    EXPECT_EQ(form().hostMenus().knowledgeBase().size(), 16000U);
    EXPECT_EQ(form().hostMenus().remote().size(), 3U + (4U << 20) / 8005) << "4 MB of text";

    form().ClearKB();
    form().AddKB("page", "New");
    EXPECT_EQ(form().hostMenus().knowledgeBase().size(), 2U);
    const auto items = opened(BarMenu::mnuKnowledgeBase);
    ASSERT_EQ(items.size(), 1001U);
    EXPECT_EQ(items[0].caption + items[1].caption + items[2].caption, "All CategoriesNewPage 1");
    EXPECT_EQ(items[1000].caption, "15000 more");
    EXPECT_FALSE(items[1000].enabled);
}

TEST_F(MenuTest, CaptionsAreShownAsTheyWereSent) {
    using namespace std::string_literals;
    const std::pair<std::string, std::string> cases[] = {{"&Save && exit\tAlt+F4", "&&Save &&&& exit Alt+F4"},
                                                         {"a\0b\b\x7F\n\xE9"s, "a b   \xE9"},
                                                         {"&", "&&"}};
    for (const auto& [sent, shown] : cases) {
        form().AddRemote("tool", sent);
        form().AddKB("page", sent);
        for (const BarMenu menu : {BarMenu::mnuRemote, BarMenu::mnuKnowledgeBase}) {
            EXPECT_EQ(opened(menu).back().caption, sent);
            EXPECT_EQ(menuText(opened(menu).back()), shown);
        }
    }
}

TEST_F(MenuTest, CaptionsAreExactAndEachItemOfAMenuHasAKeyOfItsOwn) {
    const std::pair<std::vector<MenuItem>, std::string> menus[] = {
        {bar(), "&File F&ont &Printer &Knowledge Base &Remote"},
        {lastingItems(BarMenu::mnuFile),
         "&Reset 132 Char per &Line CR &sends CR LF &Clear Clipboard &Print Screen  E&xit"},
        {lastingItems(BarMenu::mnuFont),
         "&MS LineDraw &Lucida Console &Terminal &Arial L&ucida Sans Unicode Times &New Roman "
         "&HyperFont Light HyperFont &Dark"},
        {lastingItems(BarMenu::mnuPrinter), "&Default &Enhanced Metafile &Text &Raw "},
        {opened(BarMenu::mnuPrinter), "No printers"},
        {opened(BarMenu::mnuKnowledgeBase), "All Categories"},
        {opened(BarMenu::mnuRemote), "None"},
        {mnuRightClick(true, true), "&Copy &Paste C&lear"}};
    for (const auto& [items, expected] : menus) {
        std::string texts;
        std::set<int> keys;
        for (const MenuItem& item : items) {
            std::string text = menuText(item);
            texts += (texts.empty() ? "" : " ") + text;
            EXPECT_TRUE(item.accessKey == '\0' || keys.insert(toupper(item.accessKey)).second) << text;
            std::erase(text, '&');
            EXPECT_EQ(text, item.caption);
        }
        EXPECT_EQ(texts, expected);
    }
    EXPECT_EQ(menuText(mnuFileScreenWidth("80 Char per Line")), "80 Char per &Line");
}

TEST_F(MenuTest, OnlyWebAddressesStartWithoutTheUsersYes) {
    const ScratchFolder folder;
    form().IniFile(folder.file("settings.ini"));
    HeadlessDesktop& desktop = platform.desktop;
    auto& starts = platform.headlessLauncher.shellStarts;
    /// "started" or "not started", after whether the user was asked.
    const auto choosing = [&](BarMenu menu, const std::string& command, bool answer) {
        menu == BarMenu::mnuRemote ? form().AddRemote(command, "Innocent")
                                   : form().AddKB(command, "Innocent");
        desktop.answer = answer;
        desktop.questions.clear();
        starts.clear();
        chooseLast(menu);
        const std::string question = desktop.questions.empty() ? "" : desktop.questions[0];
        EXPECT_TRUE(question.empty() || question.ends_with("\n\n" + command)) << question;
        return std::string(question.empty() ? "" : "asked, ") + (starts.empty() ? "not started" : "started");
    };
    for (const char* address : {"http://a", "HttpS://a", "ftp://a", "MAILTO:a@b"})
        EXPECT_EQ(choosing(BarMenu::mnuKnowledgeBase, address, false), "started") << address;
    for (const char* other : {"tool.exe -x", "http://a b", "file:///c:/a", "\\\\host\\share", ""}) {
        EXPECT_EQ(choosing(BarMenu::mnuKnowledgeBase, other, false), "asked, not started") << other;
        EXPECT_EQ(choosing(BarMenu::mnuKnowledgeBase, other, true), "asked, started") << other;
        EXPECT_EQ(choosing(BarMenu::mnuRemote, other, false), "started") << other;
    }
    IniFile::WriteIni(profiles, form().IniFile(), "Misc", "ConfirmPrograms", "1");
    EXPECT_EQ(choosing(BarMenu::mnuRemote, "tool.exe", false), "asked, not started");
    EXPECT_EQ(choosing(BarMenu::mnuRemote, "tool.exe", true), "asked, started");
    desktop.onQuestion = [this](const std::string&) { window().events()->Form_Close(); };
    EXPECT_EQ(choosing(BarMenu::mnuRemote, "tool.exe", true), "asked, not started") << "closed meanwhile";
}

TEST_F(MenuTest, TheSettingsFileNamesTheFirstPageOfTheKnowledgeBase) {
    const ScratchFolder folder;
    form().IniFile(folder.file("settings.ini"));
    for (const char* page : {"", "http://intranet/help", "tool.exe", ""}) {
        form().mnKnowledgeBaseLink_Click(0);
        IniFile::WriteIni(profiles, form().IniFile(), "Misc", "KnowledgeBase", page);
    }
    form().mnKnowledgeBaseLink_Click(0);
    Texts opened;
    for (const auto& start : platform.headlessLauncher.shellStarts) opened.push_back(start.program);
    EXPECT_EQ(opened,
              (Texts{"http://localhost/", "http://localhost/", "http://intranet/help", "http://localhost/"}));
    EXPECT_EQ(platform.desktop.questions.size(), 1U);
}

TEST_F(MenuTest, CommandsThatThePlatformCannotTakeAreRefused) {
    using namespace std::string_literals;
    const std::string s900(900, 'x');
    const std::string s895(895, 'x');
    const struct {
        std::string command;
        bool started, asked;
    } cases[] = {{s900, true, true},
                 {s900 + 'x', false, false},
                 {'"' + s900 + "x\"", false, false},
                 {"\"C:\\" + s895 + "\\\" -x", true, true},
                 {"\"C:\\" + s900 + "\\a.exe\"", false, false},
                 {"a.exe " + std::string(7994, '-'), true, false},
                 {"a.exe " + std::string(7995, '-'), false, false},
                 {"http://" + std::string(893, 'a'), true, false},
                 {"http://" + std::string(894, 'a'), false, false},
                 {"a.exe\0 -x"s, false, false}};
    HeadlessLauncher& launcher = platform.headlessLauncher;
    const auto count = [&] { return launcher.shellStarts.size() + launcher.plainStarts.size(); };
    launcher.shellResult = 2;
    platform.desktop.answer = true;
    std::size_t messages = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command.substr(0, 10) + " of " + std::to_string(c.command.size()));
        launcher.shellStarts.clear();
        launcher.plainStarts.clear();
        platform.desktop.questions.clear();
        form().AddRemote(c.command, "Tool");
        chooseLast(BarMenu::mnuRemote);
        EXPECT_EQ(count(), c.started ? 2U : 0U);
        if (!c.started) ++messages;
        EXPECT_EQ(window().failures().size(), messages);
        form().AddKB(c.command, "Page");
        chooseLast(BarMenu::mnuKnowledgeBase);
        EXPECT_EQ(platform.desktop.questions.size(), c.asked ? 1U : 0U);
        messages = window().failures().size();
    }
    EXPECT_LT(window().failures().back().size(), 2200U);
}

TEST(CommandTextTest, NothingInACommandHidesFromItsReader) {
    using namespace std::string_literals;
    const std::string line(72, 'x');
    const std::pair<std::string, std::string> cases[] = {
        {"\"C:\\My Tools\\t.exe\"   /x", "\"C:\\My Tools\\t.exe\"   /x"},
        {"a\r\nb\t\x7F\0\xE9"s, "a<0D><0A>b<09><7F><00><E9>"},
        {"a.exe" + std::string(300, ' ') + "-x" + std::string(4, ' '), "a.exe<300 blanks>-x<4 blanks>"},
        {line, line},
        {line + line + "x", line + '\n' + line + "\nx"}};
    for (const auto& [command, shown] : cases) EXPECT_EQ(shownCommand(command), shown);
    EXPECT_TRUE(canBeShownWhole(std::string(2000, 'x')));
    EXPECT_FALSE(canBeShownWhole(std::string(2001, 'x')));
    EXPECT_FALSE(canBeShownWhole(std::string(501, '\n')));
    EXPECT_TRUE(shownCommand(std::string(8000, 'x')).ends_with("x...")) << "and not that it were all";
}

TEST_F(MenuTest, PrintersAreShownAsTheyAreCalled) {
    const ScratchFolder folder;
    form().IniFile(folder.file("settings.ini"));
    EXPECT_FALSE(opened(BarMenu::mnuPrinter).at(0).enabled);
    printers.installed = {"A & B && C", "&"};
    printers.defaultPrinter = printers.installed[0];
    EXPECT_EQ(menuText(opened(BarMenu::mnuPrinter).at(0)), "A && B &&&& C (default)");
    chooseLast(BarMenu::mnuPrinter);
    const auto items = opened(BarMenu::mnuPrinter);
    EXPECT_EQ(menuText(items.at(1)), "&&");
    EXPECT_TRUE(items.at(1).checked && !items.at(0).checked);
}

}  // namespace
}  // namespace kavrelon
