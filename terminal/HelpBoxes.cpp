#include "terminal/HelpBoxes.h"

#include <utility>

#include "support/RuntimeError.h"

namespace kavrelon {

std::size_t HelpBoxes::checked(int slot) {
    if (slot < 0 || slot >= kSlots) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    return static_cast<std::size_t>(slot);
}

template <class Visit>
void HelpBoxes::forEach(Visit visit) noexcept {
    for (auto& slot : slots_) {
        // A copy: in the messages of a box that closes or moves somebody may come back to its slot.
        if (const std::shared_ptr<frmHelp> box = slot) carryOn([&] { visit(slot, *box); });
    }
}

void HelpBoxes::put(int slot, std::shared_ptr<frmHelp> box) {
    if (const auto before = std::exchange(slots_[checked(slot)], std::move(box))) before->Unload();
}

void HelpBoxes::close(int slot) {
    if (const auto box = std::exchange(slots_[checked(slot)], nullptr)) box->Unload();
}

void HelpBoxes::closeAll() noexcept {
    forEach([](auto& slot, frmHelp& box) {
        slot.reset();
        box.Unload();
    });
}

void HelpBoxes::closeFrom(int row) noexcept {
    forEach([row](auto& slot, frmHelp& box) {
        if (box.BoxTop() < row) return;
        slot.reset();
        box.Unload();
    });
}

void HelpBoxes::forget(const frmHelp& box) noexcept {
    forEach([&box](auto& slot, const frmHelp& each) {
        if (&each == &box) slot.reset();
    });
}

void HelpBoxes::follow(const HelpGrid& grid) noexcept {
    if (grid == grid_) return;
    carryOn([&] { grid_ = grid; });
    forEach([&grid](auto&, frmHelp& box) {
        box.followGrid(grid.XOffset, grid.YOffset, grid.CharWidth, grid.CharHeight, grid.fontName,
                       grid.fontSize);
    });
}

void HelpBoxes::parentChanged() noexcept {
    forEach([](auto&, frmHelp& box) { box.parentChanged(); });
}

std::vector<int> HelpBoxes::openSlots() const {
    std::vector<int> open;
    for (int slot = 0; slot < kSlots; ++slot) {
        if (slots_[static_cast<std::size_t>(slot)]) open.push_back(slot);
    }
    return open;
}

const frmHelp* HelpBoxes::at(int slot) const {
    return slots_[checked(slot)].get();
}

}  // namespace kavrelon
