#pragma once

namespace kavrelon {

/// What the character screen tells of itself, at once and in the order in which it happens. An observer may
/// let window messages through.
class ScreenObserver {
  public:
    virtual ~ScreenObserver() = default;

    /// The whole screen is being erased: the cursor is home, and the cells are about to be blanked.
    virtual void screenErased() noexcept = 0;
    /// The screen from row `firstRow` (0-based) down is being erased: its cells are blank, the window not
    /// yet.
    virtual void rowsErased(int firstRow) noexcept = 0;
    /// The grid of cells may have taken another place, cell size or font, and is drawn there.
    virtual void gridMoved() = 0;
    /// A bell character was received. Told only while there is a window.
    virtual void bellReceived() = 0;
};

}  // namespace kavrelon
