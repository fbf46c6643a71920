#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/ReplayScript.h"

namespace kavrelon {

/// The words of a line, taken one by one. Each of these throws ReplaySyntaxError where the line makes no
/// sense.
class ReplayOperands {
  public:
    /// The line must outlive the operands.
    explicit ReplayOperands(const ReplayLine& line) : line_(line) {}

    bool empty() const { return next_ == line_.words.size(); }
    std::string word();
    std::string string();
    std::int16_t number();
    /// Two-digit hexadecimal bytes, to the end of the line.
    std::vector<std::uint8_t> bytes();
    /// One of two words; whether it is the first.
    bool choice(const std::string& yes, const std::string& no);
    /// There must be this many words left.
    void expect(int count) const;

    [[noreturn]] void fail(const std::string& what) const { throw ReplaySyntaxError(line_.number, what); }

  private:
    const ReplayLine& line_;
    std::size_t next_ = 0;
};

}  // namespace kavrelon
