#pragma once

#include <string>
#include <string_view>

namespace kavrelon {

/// Puts the terminal's default colours where a remote system asks for its default rendition.
///
/// The terminal's table has no `ESC[m`, its 0 leaves the colours as they are, and it has neither 39 nor 49:
/// what one program has coloured would colour all that comes after. In every list of plain parameters that
/// ends with "m", an empty one and 0 become `37;40;0`, 39 becomes `37` and 49 `40`, each at its place. All
/// else stays as it was, what follows 38 or 48 (a colour of a palette) included. Blocks may end anywhere.
class DefaultColours {
  public:
    /// Appends `bytes` to `out`, but for an unfinished list, which the next block may end.
    void rewrite(std::string_view bytes, std::string& out);
    /// Forgets an unfinished list.
    void reset() { held_.clear(); }

  private:
    std::string held_;  // a sequence that may become a list
};

}  // namespace kavrelon
