#pragma once

#include <string_view>

#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/layout/DisplayList.h"
#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// An IMG in the flow. It is as large as it says, otherwise as large as its picture; with one number given,
/// the other follows in proportion. Without a picture it shows the alternative text in a frame.
FlowPicture pictureBox(const HTMLElement& image, std::string_view alternative, const Picture* picture,
                       const TextStyle& style, Canvas& canvas);

/// Adds a picture with its border, or with its alternative text, to a display list. `corner` is the top left
/// corner of its outer box, `ground` the colour behind it.
void setPictureBox(const FlowPicture& picture, const Flow& flow, DisplayList& list, std::uint32_t frame,
                   Point corner, Colour ground);

}  // namespace kavrelon
