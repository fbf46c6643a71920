#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "samplehost/RemoteSystem.h"
#include "samplehost/demo/DemoMenu.h"
#include "samplehost/demo/DemoPage.h"
#include "samplehost/demo/TerminalWriter.h"

namespace kavrelon {

/// The built-in remote system: a menu, and pages that show what the terminal can do.
///
/// Until the first key arrives it goes through its pages by itself; after that the user chooses them. Its
/// only clock is the `elapsed` time of `advance`.
class DemoSession final : public RemoteSystem {
  public:
    DemoSession();
    /// A session with these pages instead of its own.
    explicit DemoSession(std::vector<std::unique_ptr<DemoPage>> pages);
    ~DemoSession() override;

    void advance(std::chrono::milliseconds elapsed, RemoteOutput& received) override;
    void send(std::string_view text, bool crLf) override;
    /// Ends the current page and shows the menu.
    void sendBreak() override;
    void resize(int columns, int rows) override;
    std::optional<SessionEnd> ending() const override { return ending_; }

    /// The current page, counted from 0; -1 while the menu is shown.
    int currentPage() const { return current_; }
    /// The menu's highlighted entry, counted from 0. The one after the pages is the log-off.
    int highlighted() const { return menu_.highlighted(); }
    int pageCount() const { return static_cast<int>(pages_.size()); }

  private:
    DemoScreen screen();
    void logOn();
    void logOff();
    void showMenu();
    void showPage(int index);
    void leavePage();
    void choose(int entry);
    void walk();
    void menuKey(char key);
    void pageKey(char key);

    RemoteOutput outgoing_;
    TerminalWriter writer_{outgoing_};
    std::vector<std::unique_ptr<DemoPage>> pages_;
    DemoMenu menu_;
    int current_ = -1;
    int nextOnWalk_ = 0;
    int columns_ = kPageColumns;
    int rows_ = kPageRows;
    // The screen size before the current page, which the page restores.
    int columnsBeforePage_ = kPageColumns;
    int rowsBeforePage_ = kPageRows;
    bool started_ = false;
    bool unattended_ = true;
    std::chrono::milliseconds connected_{0};
    std::chrono::milliseconds shown_{0};
    std::optional<SessionEnd> ending_;
};

}  // namespace kavrelon
