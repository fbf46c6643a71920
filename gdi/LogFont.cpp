#include "gdi/LogFont.h"

#include <algorithm>

namespace kavrelon {

LOGFONTA logFont(std::string_view face, LONG height, const FontStyle& style) {
    LOGFONTA result{};
    const auto length = std::min(face.size(), sizeof result.lfFaceName - 1);
    std::copy_n(face.data(), length, result.lfFaceName);
    result.lfHeight = height;
    result.lfWeight = style.bold ? FW_BOLD : FW_NORMAL;
    result.lfItalic = style.italic;
    result.lfUnderline = style.underline;
    result.lfStrikeOut = style.strikethrough;
    return result;
}

}  // namespace kavrelon
