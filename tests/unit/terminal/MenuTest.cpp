#include <set>

#include "terminal/MenuItems.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

class MenuTest : public ConnectedTest {
  protected:
    HeadlessPrinters& printers = platform.headlessPrinters;

    /// The items that a menu gets when it opens.
    std::vector<MenuItem> opened(BarMenu menu) const { return passingItems(menu, form()); }
    void chooseLast(BarMenu menu) const { choose(opened(menu).back().command, form()); }
};

TEST_F(MenuTest, EachItemHasItsOwnCommandHoweverManyThereAre) {
    for (int i = 1; i <= 17000; ++i) {
        form().AddKB("page" + std::to_string(i), "Page");
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
        if (item.command == MenuCommand::Separator) continue;
        EXPECT_TRUE(commands.insert(item.command).second) << item.caption;
    }
    EXPECT_EQ(commands.size(), 3U + 5 + 8 + 4 + 500 + 16000 + 16000);

    const int before = window().checkedFontEntry();
    for (const int stray : {0, 99, 105, 149, 153, 200, 209, 299, 304, 900, 999, 17000, 36000, 65535}) {
        ASSERT_FALSE(commands.contains(MenuCommand(stray)));
        choose(MenuCommand(stray), form());
    }
    EXPECT_TRUE(window().failures().empty() && window().checkedFontEntry() == before);
    chooseLast(BarMenu::mnuKnowledgeBase);
    chooseLast(BarMenu::mnuRemote);
    const auto& starts = platform.headlessLauncher.shellStarts;
    ASSERT_EQ(starts.size(), 2U);
    EXPECT_EQ(starts[0].program + ' ' + starts[1].program, "page15999 tool16000");
}

TEST_F(MenuTest, PrintersAreShownAsTheyAreCalled) {
    const ScratchFolder folder;
    form().IniFile(folder.file("settings.ini"));
    EXPECT_FALSE(opened(BarMenu::mnuPrinter).at(0).enabled);
    printers.installed = {"A & B && C", "&"};
    printers.defaultPrinter = printers.installed[0];
    EXPECT_EQ(opened(BarMenu::mnuPrinter).at(0).caption, "A && B &&&& C (default)");
    chooseLast(BarMenu::mnuPrinter);
    const auto items = opened(BarMenu::mnuPrinter);
    EXPECT_EQ(items.at(1).caption, "&&");
    EXPECT_TRUE(items.at(1).checked && !items.at(0).checked);
}

}  // namespace
}  // namespace kavrelon
