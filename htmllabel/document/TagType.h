#pragma once

#include <cstdint>

namespace kavrelon {

/// What an element is. The numbers are stored in the records and are fixed.
enum TagType : std::int32_t {
#define LONE(tag, code, ...) tag = (code),
#define PAIR(opener, closer, code, ...) opener = (code), closer = (code) + 1,
#include "htmllabel/document/Tags.def"
};

}  // namespace kavrelon
