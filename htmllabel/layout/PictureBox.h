#pragma once

#include <string_view>

#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/layout/DisplayList.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// How an IMG stands in the flow: as large as it says, else as large as its picture (one number given keeps
/// the proportion). Without a picture it shows the alternative text in a frame.
FlowPicture pictureBox(const HTMLElement& image, std::string_view alternative, const Picture* picture,
                       const TextStyle& style, Canvas& canvas);

/// A picture, its border or alternative text included, with its outer top left corner at `corner`.
void setPictureBox(const FlowPicture& picture, const Flow& flow, DisplayList& list, std::uint32_t frame,
                   Point corner, Colour ground);

}  // namespace kavrelon
