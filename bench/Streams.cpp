#include "bench/Streams.h"

#include <random>

#include "headless/FindNamed.h"

namespace kavrelon::bench {
namespace {

/// Text and numbers that are the same on every machine (the standard fixes the generator, not the
/// distributions).
class Source {
  public:
    int number(int least, int most) {
        return least + static_cast<int>(generator_() % static_cast<unsigned>(most - least + 1));
    }
    std::string word(int least, int most) {
        std::string text;
        for (int left = number(least, most); left > 0; --left) {
            text += static_cast<char>(number('a', 'z'));
        }
        return text;
    }
    /// Words with blanks between them, exactly `length` characters.
    std::string text(int length) {
        std::string words;
        while (static_cast<int>(words.size()) < length) words += word(2, 9) + ' ';
        words.resize(static_cast<std::size_t>(length));
        return words;
    }

  private:
    std::mt19937 generator_{2024};
};

std::string position(int line, int column) {
    return "\033[" + std::to_string(line) + ';' + std::to_string(column) + 'H';
}

std::string plainLines(ScreenExtent extent, std::size_t length) {
    Source source;
    std::string stream;
    while (stream.size() < length) stream += source.text(extent.columns - 1) + "\r\n";
    return stream;
}

std::string wrappedText(ScreenExtent, std::size_t length) {
    return Source().text(static_cast<int>(length));
}

std::string letterLines(ScreenExtent, std::size_t length) {
    std::string stream;
    while (stream.size() < length) stream += "x\r\n";
    return stream;
}

/// Words in lines, each after a sequence.
template <class Sequence>
std::string colouredWords(ScreenExtent extent, std::size_t length, Sequence sequence) {
    Source source;
    std::string stream;
    while (stream.size() < length) {
        for (int column = 0;;) {
            const std::string word = source.word(2, 9) + ' ';
            column += static_cast<int>(word.size());
            if (column >= extent.columns) break;
            stream += sequence(source) + word;
        }
        stream += "\r\n";
    }
    return stream;
}

std::string oneParameterColour(ScreenExtent extent, std::size_t length) {
    return colouredWords(
        extent, length, [](Source& source) { return "\033[" + std::to_string(source.number(30, 37)) + 'm'; });
}

std::string severalParameterColour(ScreenExtent extent, std::size_t length) {
    return colouredWords(extent, length, [](Source& source) {
        return "\033[" + std::to_string(source.number(0, 1)) + ';' + std::to_string(source.number(30, 37)) +
               ';' + std::to_string(source.number(40, 47)) + 'm';
    });
}

std::string addressedPages(ScreenExtent extent, std::size_t length) {
    Source source;
    std::string stream;
    while (stream.size() < length) {
        stream += "\033[2J";
        for (int line = 1; line <= extent.lines; ++line) {
            for (int column = 1; column < extent.columns - 16; column += 20) {
                stream += position(line, column) + source.text(source.number(6, 16));
            }
        }
    }
    return stream;
}

std::string scrollingMix(ScreenExtent extent, std::size_t length) {
    Source source;
    std::string stream;
    for (int line = 0; stream.size() < length; ++line) {
        const std::string level = line % 5 == 0 ? "\033[33mwarn\033[0m " : "\033[32minfo\033[0m ";
        stream += level + source.text(source.number(10, extent.columns * 3 / 2)) + "\r\n";
        if (line % 40 == 39)
            stream += position(extent.lines, 1) + "\033[K\033[7m" + source.text(20) + "\033[0m\r\n";
    }
    return stream;
}

constexpr StreamKind kKinds[]{
    {"plain", "lines of text one short of the screen's width", plainLines},
    {"wrapped", "text without line ends", wrappedText},
    {"letters", "one letter a line", letterLines},
    {"colour", "a colour of one parameter before every word", oneParameterColour},
    {"colours", "a rendition of three parameters before every word", severalParameterColour},
    {"pages", "screens of short addressed fields", addressedPages},
    {"scroll", "a log with long and short lines, colours and a status line", scrollingMix},
};

}  // namespace

std::span<const StreamKind> streamKinds() {
    return kKinds;
}

const StreamKind* findStreamKind(std::string_view name) {
    return findNamed(kKinds, name);
}

}  // namespace kavrelon::bench
