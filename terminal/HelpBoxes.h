#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kavrelon {

/// A help box as the terminal keeps it: its cell rectangle and its text, lines divided by CR LF.
struct HelpBox {
    std::int16_t BoxTop = 0;
    std::int16_t BoxLeft = 0;
    std::int16_t BoxWidth = 0;
    std::int16_t BoxHeight = 0;
    std::string text;
};

/// The 51 slots for the help boxes of one terminal window.
class HelpBoxes {
  public:
    static constexpr int kSlots = 51;

    /// Puts a box into a slot, in place of one that is there. Raises SubscriptOutOfRange outside 0 to 50.
    void put(int slot, HelpBox box);
    /// Closes the box of a slot, if there is one. Raises SubscriptOutOfRange outside 0 to 50.
    void close(int slot);
    void closeAll() noexcept;
    /// Closes every box whose top stands in screen row `row` or below it.
    void closeFrom(int row) noexcept;

    /// The slots in use, ascending.
    std::vector<int> openSlots() const;
    /// The box of a slot, null when it is empty. Raises SubscriptOutOfRange outside 0 to 50.
    const HelpBox* at(int slot) const;

  private:
    static std::size_t checked(int slot);

    std::array<std::unique_ptr<HelpBox>, kSlots> slots_;
};

}  // namespace kavrelon
