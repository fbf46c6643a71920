#pragma once

#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

namespace kavrelon {

/// One word of a script line: bare, or in double quotes with its escapes resolved.
struct ReplayWord {
    std::string text;
    bool quoted = false;
};

/// One line of a script that does something: its command first, then its operands.
struct ReplayLine {
    int number = 0;
    std::vector<ReplayWord> words;
};

/// A script that cannot be read; the text says what is wrong, the number where.
class ReplaySyntaxError : public std::runtime_error {
  public:
    ReplaySyntaxError(int line, const std::string& what) : std::runtime_error(what), line_(line) {}
    int line() const { return line_; }

  private:
    int line_;
};

/// A script that is read line by line.
class ReplayScript {
  public:
    explicit ReplayScript(std::istream& input) : input_(input) {}
    /// The next line that is neither blank nor a comment; false at the end. Throws ReplaySyntaxError.
    bool next(ReplayLine& line);

  private:
    std::istream& input_;
    int number_ = 0;
};

/// The byte that two hexadecimal digits spell; -1 for anything else.
int hexByte(std::string_view digits);

}  // namespace kavrelon
