#include "tools/ReplayScript.h"

#include <charconv>
#include <istream>
#include <string_view>

namespace kavrelon {
namespace {

constexpr std::string_view kBlanks = " \t\r";

/// Takes the words of one line off its front.
class WordReader {
  public:
    WordReader(std::string_view text, int line) : text_(text), line_(line) {}

    bool next(ReplayWord& word) {
        const auto start = text_.find_first_not_of(kBlanks);
        if (start == std::string_view::npos) return false;
        text_.remove_prefix(start);
        word = text_.front() == '"' ? quoted() : bare();
        return true;
    }

  private:
    ReplayWord bare() {
        const auto length = std::min(text_.find_first_of(kBlanks), text_.size());
        ReplayWord word{std::string(text_.substr(0, length)), false};
        text_.remove_prefix(length);
        return word;
    }

    ReplayWord quoted() {
        ReplayWord word{{}, true};
        text_.remove_prefix(1);
        while (!text_.starts_with('"')) word.text += character();
        text_.remove_prefix(1);
        return word;
    }

    char character() {
        if (text_.empty()) fail("a string does not end");
        if (text_.front() != '\\') return take(1);
        if (text_.starts_with("\\\"") || text_.starts_with("\\\\")) {
            text_.remove_prefix(1);
            return take(1);
        }
        const int byte = text_.starts_with("\\x") ? hexByte(text_.substr(2, 2)) : -1;
        if (byte < 0) fail("a string has an unknown escape");
        take(4);
        return static_cast<char>(byte);
    }

    char take(std::size_t count) {
        const char first = text_.front();
        text_.remove_prefix(count);
        return first;
    }

    [[noreturn]] void fail(const char* what) const { throw ReplaySyntaxError(line_, what); }

    std::string_view text_;
    int line_;
};

}  // namespace

int hexByte(std::string_view digits) {
    int value = -1;
    const auto* end = digits.data() + digits.size();
    if (digits.size() != 2 || digits.front() == '-') return -1;
    const auto [last, error] = std::from_chars(digits.data(), end, value, 16);
    return error == std::errc() && last == end ? value : -1;
}

bool ReplayScript::next(ReplayLine& line) {
    for (std::string text; std::getline(input_, text);) {
        ++number_;
        const auto start = text.find_first_not_of(kBlanks);
        if (start == std::string::npos || text[start] == '#') continue;
        line = {number_, {}};
        WordReader reader(text, number_);
        for (ReplayWord word; reader.next(word);) line.words.push_back(std::move(word));
        return true;
    }
    return false;
}

}  // namespace kavrelon
