#pragma once

#include "support/Picture.h"

namespace kavrelon {

/// A picture without pixels: a headless window shows its letter in the cells that it covers.
class HeadlessPicture final : public Picture {
  public:
    HeadlessPicture(char letter, bool opaque, Size size = {64, 64})
        : letter_(letter), opaque_(opaque), size_(size) {}
    char letter() const { return letter_; }
    Size size() const override { return size_; }
    bool opaque() const override { return opaque_; }

  private:
    char letter_;
    bool opaque_;
    Size size_;
};

}  // namespace kavrelon
