#pragma once

#include <string_view>

#include "htmllabel/layout/PictureSource.h"

namespace kavrelon {

/// For documents that are laid out without their pictures.
class NoPictures final : public PictureSource {
  public:
    const Picture* picture(std::string_view) override { return nullptr; }
};

}  // namespace kavrelon
