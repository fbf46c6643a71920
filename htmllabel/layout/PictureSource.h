#pragma once

#include <string_view>

#include "support/Picture.h"

namespace kavrelon {

/// Supplies the pictures that a document names: those of each IMG and of the page, asked for while the
/// document is measured. The source owns them; they must live as long as the layout.
class PictureSource {
  public:
    virtual ~PictureSource() = default;
    /// Null when there is no picture of this name.
    virtual const Picture* picture(std::string_view source) = 0;
};

}  // namespace kavrelon
