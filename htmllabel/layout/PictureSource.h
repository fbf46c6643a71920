#pragma once

#include <string_view>

#include "support/Picture.h"

namespace kavrelon {

/// The pictures that a document names. Asked for each IMG and for the page's picture, while the document is
/// measured; the source owns the pictures, which must live as long as the layout.
class PictureSource {
  public:
    virtual ~PictureSource() = default;
    /// Null when there is none of this name.
    virtual const Picture* picture(std::string_view source) = 0;
};

}  // namespace kavrelon
