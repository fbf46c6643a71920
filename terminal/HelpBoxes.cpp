#include "terminal/HelpBoxes.h"

#include "support/RuntimeError.h"

namespace kavrelon {

std::size_t HelpBoxes::checked(int slot) {
    if (slot < 0 || slot >= kSlots) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    return static_cast<std::size_t>(slot);
}

void HelpBoxes::put(int slot, HelpBox box) {
    slots_[checked(slot)] = std::make_unique<HelpBox>(std::move(box));
}

void HelpBoxes::close(int slot) {
    slots_[checked(slot)].reset();
}

void HelpBoxes::closeAll() noexcept {
    for (auto& box : slots_) box.reset();
}

void HelpBoxes::closeFrom(int row) noexcept {
    for (auto& box : slots_) {
        if (box && box->BoxTop >= row) box.reset();
    }
}

std::vector<int> HelpBoxes::openSlots() const {
    std::vector<int> open;
    for (int slot = 0; slot < kSlots; ++slot) {
        if (slots_[static_cast<std::size_t>(slot)]) open.push_back(slot);
    }
    return open;
}

const HelpBox* HelpBoxes::at(int slot) const {
    return slots_[checked(slot)].get();
}

}  // namespace kavrelon
