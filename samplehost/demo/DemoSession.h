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

/// The built-in remote system: a menu and pages that show what the terminal can do.
///
/// As long as no key arrives it walks through its pages by itself; from the first key on it goes where the
/// user steers it. Its only clock is the time that `advance` is told.
class DemoSession final : public RemoteSystem {
  public:
    DemoSession();
    /// A session of other pages than its own.
    explicit DemoSession(std::vector<std::unique_ptr<DemoPage>> pages);
    ~DemoSession() override;

    void advance(std::chrono::milliseconds elapsed, std::string& received) override;
    void send(std::string_view text) override;
    /// Breaks off the page that is shown.
    void sendBreak() override;
    void resize(int columns, int rows) override;
    std::optional<SessionEnd> ending() const override { return ending_; }

    /// The page shown, counted from 0, or -1 while the menu is.
    int currentPage() const { return current_; }
    /// The menu's entry under the highlight, counted from 0; behind the pages stands the log-off.
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

    std::string outgoing_;
    TerminalWriter writer_{outgoing_};
    std::vector<std::unique_ptr<DemoPage>> pages_;
    DemoMenu menu_;
    int current_ = -1;
    int nextOnWalk_ = 0;
    int columns_ = kPageColumns;
    int rows_ = kPageRows;
    // The size that the shown page found, which it leaves behind.
    int columnsBeforePage_ = kPageColumns;
    int rowsBeforePage_ = kPageRows;
    bool started_ = false;
    bool unattended_ = true;
    std::chrono::milliseconds connected_{0};
    std::chrono::milliseconds shown_{0};
    std::optional<SessionEnd> ending_;
};

}  // namespace kavrelon
