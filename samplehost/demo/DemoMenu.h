#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "samplehost/demo/DemoPage.h"

namespace kavrelon {

/// The demo session's first screen: banner, list of entries with one highlighted, clock and foot line.
class DemoMenu {
  public:
    struct Entry {
        std::string title;
        /// Shown below the list while the entry is highlighted.
        std::string summary;
    };

    void add(Entry entry) { entries_.push_back(std::move(entry)); }
    int size() const { return static_cast<int>(entries_.size()); }
    int highlighted() const { return highlighted_; }

    /// Draws everything on an erased screen.
    void draw(const DemoScreen& screen, std::chrono::milliseconds connected);
    /// Moves the highlight; an index past either end continues at the other.
    void highlight(const DemoScreen& screen, int entry);
    /// Moves the highlight without drawing it.
    void remember(int entry) { highlighted_ = entry; }
    void showNote(const DemoScreen& screen, std::string_view note);
    void showClock(const DemoScreen& screen, std::chrono::milliseconds connected);

  private:
    void drawBanner(const DemoScreen& screen) const;
    void drawEntry(const DemoScreen& screen, int entry) const;
    void drawSummary(const DemoScreen& screen) const;
    void parkCursor(const DemoScreen& screen) const;

    std::vector<Entry> entries_;
    int highlighted_ = 0;
};

}  // namespace kavrelon
