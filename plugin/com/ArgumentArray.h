#pragma once

#include <windows.h>

#include <oleauto.h>

#include <array>
#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "plugin/clsTerminal.h"

namespace kavrelon {

/// The fields of a sequence, copied out of the array in which a host or a script passes them, so that the
/// array is free again when the sequence is carried out. Those of an ordinary sequence need no heap memory.
class ArgumentArray {
  public:
    /// Takes one dimension of strings or of variants, whatever its lower bound; numbers become text.
    /// An array that was never dimensioned, a null one included, has no fields. Throws TypeMismatch for more
    /// dimensions and for other elements.
    explicit ArgumentArray(SAFEARRAY* array);
    ArgumentArray(const ArgumentArray&) = delete;
    ArgumentArray& operator=(const ArgumentArray&) = delete;

    /// Refers to this object.
    EscapeArguments arguments() const { return EscapeArguments(fields_, lowerBound_); }

  private:
    void add(std::wstring_view field);
    void add(VARIANT& field);

    std::array<std::byte, 512> room_;
    std::pmr::monotonic_buffer_resource memory_{room_.data(), room_.size()};
    std::pmr::vector<std::string_view> fields_{&memory_};
    int lowerBound_ = 1;
};

}  // namespace kavrelon
