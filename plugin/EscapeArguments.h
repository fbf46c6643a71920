#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "support/RuntimeError.h"

namespace kavrelon {

/// The fields captured from a sequence, addressed by absolute index as the host delivers them: the first
/// field has index 1, whatever the array's lower bound. Refers to the caller's fields.
class EscapeArguments {
  public:
    EscapeArguments() = default;
    explicit EscapeArguments(std::span<const std::string_view> fields, int lowerBound = 1)
        : fields_(fields), lowerBound_(lowerBound) {}

    /// The field at an absolute index; raises SubscriptOutOfRange when there is none.
    std::string_view at(int index) const {
        const auto offset = static_cast<std::size_t>(std::int64_t{index} - lowerBound_);
        if (offset >= fields_.size()) raise(RuntimeErrorNumber::SubscriptOutOfRange);
        return fields_[offset];
    }
    /// All fields, from the lower bound to the upper.
    std::span<const std::string_view> all() const { return fields_; }

  private:
    std::span<const std::string_view> fields_;
    int lowerBound_ = 1;
};

}  // namespace kavrelon
