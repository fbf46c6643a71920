#include "samplehost/demo/TerminalWriter.h"

#include <algorithm>

namespace kavrelon {

namespace {

struct FrameGlyphs {
    char topLeft;
    char topRight;
    char bottomLeft;
    char bottomRight;
    char horizontal;
    char vertical;
};

constexpr FrameGlyphs kSingleFrame{'\xDA', '\xBF', '\xC0', '\xD9', '\xC4', '\xB3'};
constexpr FrameGlyphs kDoubleFrame{'\xC9', '\xBB', '\xC8', '\xBC', '\xCD', '\xBA'};

const FrameGlyphs& glyphsOf(FrameLines lines) {
    return lines == FrameLines::Double ? kDoubleFrame : kSingleFrame;
}

}  // namespace

std::string spelledOut(std::string_view text) {
    std::string result;
    for (const char character : text) {
        if (static_cast<unsigned char>(character) >= 32) {
            result += character;
        } else {
            result += '<' + std::to_string(static_cast<int>(character)) + '>';
        }
    }
    return result;
}

void TerminalWriter::setOrigin(int column, int row) {
    originColumn_ = column;
    originRow_ = row;
}

TerminalWriter& TerminalWriter::at(int column, int row) {
    out_ += "\x1B[" + std::to_string(originRow_ + row + 1) + ';' +
            std::to_string(originColumn_ + column + 1) + 'H';
    return *this;
}

TerminalWriter& TerminalWriter::style(const Style& style) {
    // The rendition comes last: a foreground colour resets it.
    out_ += "\x1B[3" + std::to_string(static_cast<int>(style.fore)) + ";4" +
            std::to_string(static_cast<int>(style.back)) + ';' +
            std::to_string(static_cast<int>(style.look)) + 'm';
    return *this;
}

TerminalWriter& TerminalWriter::text(std::string_view text) {
    out_ += text;
    return *this;
}

TerminalWriter& TerminalWriter::field(std::string_view text, int width) {
    const auto cells = static_cast<std::size_t>(std::max(width, 0));
    out_ += text.substr(0, cells);
    out_.append(cells - std::min(cells, text.size()), ' ');
    return *this;
}

TerminalWriter& TerminalWriter::repeat(char character, int count) {
    out_.append(static_cast<std::size_t>(std::max(count, 0)), character);
    return *this;
}

TerminalWriter& TerminalWriter::newLine() {
    return text("\r\n");
}

TerminalWriter& TerminalWriter::clearToEndOfLine() {
    return text("\x1B[K");
}

TerminalWriter& TerminalWriter::clearScreen() {
    // Erasing keeps the colours, and clears the window in its own background colour.
    return style({}).text("\x1B[2J");
}

TerminalWriter& TerminalWriter::frame(const CellBox& box, FrameLines lines) {
    const FrameGlyphs& glyphs = glyphsOf(lines);
    const int right = box.column + box.columns - 1;
    const int bottom = box.row + box.rows - 1;
    at(box.column, box.row).repeat(glyphs.topLeft, 1);
    repeat(glyphs.horizontal, box.columns - 2).repeat(glyphs.topRight, 1);
    for (int row = box.row + 1; row < bottom; ++row) {
        at(box.column, row).repeat(glyphs.vertical, 1);
        at(right, row).repeat(glyphs.vertical, 1);
    }
    at(box.column, bottom).repeat(glyphs.bottomLeft, 1);
    return repeat(glyphs.horizontal, box.columns - 2).repeat(glyphs.bottomRight, 1);
}

TerminalWriter& TerminalWriter::horizontalRule(int column, int row, int columns, FrameLines lines) {
    return at(column, row).repeat(glyphsOf(lines).horizontal, columns);
}

TerminalWriter& TerminalWriter::sizeScreen(int columns, int rows) {
    return privateSequence("SIZE " + std::to_string(columns) + ',' + std::to_string(rows));
}

TerminalWriter& TerminalWriter::newScreen() {
    return privateSequence("NS");
}

TerminalWriter& TerminalWriter::closeScreen() {
    return privateSequence("CS");
}

TerminalWriter& TerminalWriter::helpBox(int number, const CellBox& place, std::string_view text) {
    // Boxes count their columns from 1, and are three cells wider than the sequence says.
    constexpr int kExtraColumns = 3;
    constexpr int kMargins = 1;
    const std::string box = std::to_string(number);
    const std::string cells =
        std::to_string(originRow_ + place.row) + ',' + std::to_string(originColumn_ + place.column + 1) +
        ',' + std::to_string(place.columns + kMargins - kExtraColumns) + ',' + std::to_string(place.rows);
    return this->text("\x1FHELPBOX " + box + ' ' + cells + ' ').text(text).text("\x1F");
}

TerminalWriter& TerminalWriter::hideHelpBox(int number) {
    return text("\x1FHELPBOX " + std::to_string(number) + " HIDE\x1F");
}

TerminalWriter& TerminalWriter::showPicture(int number, const CellBox& place, std::string_view name) {
    // Its corners count from 1, and both belong to it.
    std::string fields;
    for (const int field :
         {originColumn_ + place.column + 1, originRow_ + place.row + 1,
          originColumn_ + place.column + place.columns, originRow_ + place.row + place.rows, number}) {
        fields += std::to_string(field) + ';';
    }
    return command("IMAGE " + fields + std::string(name));
}

TerminalWriter& TerminalWriter::clearPicture(int number) {
    return command("IMAGECLEAR " + std::to_string(number));
}

TerminalWriter& TerminalWriter::allowPasting(bool allowed) {
    return command(allowed ? "PASTEOK 1" : "PASTEOK 0");
}

TerminalWriter& TerminalWriter::allowCopying(bool allowed) {
    return command(allowed ? "CUTOK 1" : "CUTOK 0");
}

TerminalWriter& TerminalWriter::logOn(std::string_view user) {
    return privateSequence("L1 " + std::string(user));
}

TerminalWriter& TerminalWriter::logOff() {
    return privateSequence("L0");
}

TerminalWriter& TerminalWriter::addKnowledgeBase(std::string_view url, std::string_view description) {
    return text("\x1FKB ").text(url).text(",").text(description).text("\x1F");
}

TerminalWriter& TerminalWriter::addRemote(std::string_view commandLine, std::string_view description) {
    return text("\x1FREMOTE [").text(commandLine).text("] \"").text(description).text("\"\x1F");
}

TerminalWriter& TerminalWriter::command(const std::string& text) {
    output_.addCommand(text);
    return *this;
}

TerminalWriter& TerminalWriter::privateSequence(std::string_view body) {
    out_ += "\x1B\b";
    out_ += body;
    return text("\r");
}

}  // namespace kavrelon
