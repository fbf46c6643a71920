#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "helpbox/frmHelp.h"

namespace kavrelon {

/// What help boxes are placed by: where the grid of cells is in the terminal's window, and its font.
struct HelpGrid {
    std::int16_t XOffset = 0;
    std::int16_t YOffset = 0;
    float CharWidth = 0;
    float CharHeight = 0;
    std::string fontName;
    std::int16_t fontSize = 0;
    bool operator==(const HelpGrid&) const = default;
};

/// The 51 slots for the help boxes of one terminal window.
///
/// Closing and moving a box sends messages in which the host may do anything with the slots. Whoever calls
/// keeps this object alive meanwhile; it keeps the box.
class HelpBoxes {
  public:
    static constexpr int kSlots = 51;

    HelpBoxes() = default;
    ~HelpBoxes() { closeAll(); }
    HelpBoxes(const HelpBoxes&) = delete;
    HelpBoxes& operator=(const HelpBoxes&) = delete;

    /// Raises SubscriptOutOfRange outside 0 to 50; so do the others that take a slot.
    static void check(int slot) { static_cast<void>(checked(slot)); }
    /// Puts a box into a slot, and closes the one that was there.
    void put(int slot, std::shared_ptr<frmHelp> box);
    /// Closes the box of a slot, if there is one.
    void close(int slot);
    void closeAll() noexcept;
    /// Closes every box whose top is in screen row `row` or below it.
    void closeFrom(int row) noexcept;
    /// Empties the slot of a box that has been closed.
    void forget(const frmHelp& box) noexcept;

    /// Moves every box to its cells when the grid has changed: as long as it has not, a box stays where the
    /// user has dragged it.
    void follow(const HelpGrid& grid) noexcept;
    /// The terminal's window has moved, or it was shown, hidden, minimised or restored.
    void parentChanged() noexcept;

    /// The slots in use, ascending.
    std::vector<int> openSlots() const;
    /// The box of a slot, null when it is empty.
    const frmHelp* at(int slot) const;

  private:
    static std::size_t checked(int slot);
    template <class Visit>
    void forEach(Visit visit) noexcept;

    std::array<std::shared_ptr<frmHelp>, kSlots> slots_;
    HelpGrid grid_;
};

}  // namespace kavrelon
