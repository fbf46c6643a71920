#pragma once

#include "support/Geometry.h"

namespace kavrelon {

/// A picture, made by the platform that draws it.
class Picture {
  public:
    virtual ~Picture() = default;
    /// Its natural size in pixels.
    virtual Size size() const = 0;
    /// Whether it certainly covers every pixel of its rectangle.
    virtual bool opaque() const { return false; }
};

}  // namespace kavrelon
