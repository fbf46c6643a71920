#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace kavrelon {

/// The attribute of one cell, as the codes that set it.
struct CellAttr {
    std::uint8_t Fore = 0;  ///< foreground colour code, 30 to 37
    std::uint8_t Back = 0;  ///< background colour code, 40 to 47
    /// rendition code: 0 normal, 1 bold, 2 dim, 4 underline, 5 blink, 7 reverse, 8 hidden
    std::uint8_t Mode = 0;
    bool operator==(const CellAttr&) const = default;
};
static_assert(sizeof(CellAttr) == 3);

/// A cell: character and attribute together, so that a received character is one store.
struct Cell {
    std::uint8_t Char = 0;
    CellAttr Attr;
    bool operator==(const Cell&) const = default;

    /// Becomes `stamp`, a cell of character 0, with a character: one store, where copying the parts is two.
    void take(const Cell& stamp, std::uint8_t ch) {
        constexpr int kShift = std::endian::native == std::endian::little ? 0 : 24;
        const std::uint32_t whole = std::bit_cast<std::uint32_t>(stamp) | std::uint32_t{ch} << kShift;
        std::memcpy(static_cast<void*>(this), &whole, sizeof whole);
    }
};
static_assert(sizeof(Cell) == 4);

/// Elements of a row, and rows of a buffer. Element 0 and row 0 are never shown.
inline constexpr int kStoredCells = 1025;
/// The largest screen that can be stored, in columns and in rows.
inline constexpr int kMaxScreen = kStoredCells - 1;

/// One row of the screen: screen column c is element c + 1. Code 0 is an empty cell, shown as a blank.
struct ScreenLine {
    std::array<Cell, kStoredCells> Cells{};

    std::uint8_t Chars(int element) const { return Cells[static_cast<std::size_t>(element)].Char; }
    CellAttr Attrs(int element) const { return Cells[static_cast<std::size_t>(element)].Attr; }
};

}  // namespace kavrelon
