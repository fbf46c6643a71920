#pragma once

#include <cstdint>
#include <vector>

#include "htmllabel/document/HTMLElement.h"

namespace kavrelon {

/// Links the elements into a tree: each container holds what follows it up to the next closing tag of its
/// level, whichever tag that is. The closing tag that ends the root's level ends the tree; what follows it
/// stays unlinked. `children` gets the storage of all `intChildren` and must live as long as they are used.
void mBuildHierarchy(std::vector<HTMLElement>& elements, std::vector<std::int16_t>& children);

}  // namespace kavrelon
