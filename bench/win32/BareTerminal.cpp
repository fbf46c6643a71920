#include "bench/win32/BareTerminal.h"

#include <algorithm>
#include <array>
#include <utility>

#include "bench/Streams.h"

namespace kavrelon::bench {
namespace {

COLORREF colour(int number, bool bright) {
    const BYTE level = bright ? 255 : 153;
    return RGB((number & 1) != 0 ? level : 0, (number & 2) != 0 ? level : 0, (number & 4) != 0 ? level : 0);
}

}  // namespace

BareTerminal::BareTerminal(HDC context, Point corner, Size cell, Size screen)
    : context_(context), corner_(corner), cell_(cell), screen_(screen) {
    useColours();
}

void BareTerminal::play(std::string_view bytes) {
    while (!bytes.empty()) {
        const char ch = bytes.front();
        bytes.remove_prefix(1);
        if (ch == '\033') {
            bytes = sequence(bytes);
        } else if (ch == '\r') {
            column_ = 0;
        } else if (ch == '\n') {
            lineFeed();
        } else {
            put(ch);
        }
    }
}

std::string_view BareTerminal::wholeBlock(std::string_view stream) {
    std::string_view block = stream.substr(0, kBlock);
    const auto last = block.rfind('\033');
    const bool cut = last != std::string_view::npos && last != 0 &&
                     block.find_first_of("mHJK", last) == std::string_view::npos;
    return cut ? block.substr(0, last) : block;
}

void BareTerminal::put(char ch) {
    if (column_ == screen_.width) {
        column_ = 0;
        lineFeed();
    }
    ExtTextOutA(context_, corner_.x + column_ * cell_.width, corner_.y + line_ * cell_.height, ETO_OPAQUE,
                nullptr, &ch, 1, nullptr);
    ++column_;
}

void BareTerminal::lineFeed() {
    if (line_ + 1 < screen_.height) {
        ++line_;
        return;
    }
    const RECT grid{corner_.x, corner_.y, corner_.x + screen_.width * cell_.width,
                    corner_.y + screen_.height * cell_.height};
    ScrollDC(context_, 0, -cell_.height, &grid, &grid, nullptr, nullptr);
    PatBlt(context_, corner_.x, static_cast<int>(grid.bottom) - cell_.height, screen_.width * cell_.width,
           cell_.height, BLACKNESS);
}

/// Carries out the sequence that the bytes begin with, and gives what follows it.
std::string_view BareTerminal::sequence(std::string_view bytes) {
    std::array<int, 4> numbers{};
    std::size_t count = 0;
    for (bytes.remove_prefix(1); bytes.front() == ';' || (bytes.front() >= '0' && bytes.front() <= '9');
         bytes.remove_prefix(1)) {
        if (bytes.front() == ';') {
            ++count;
        } else {
            numbers.at(count) = numbers.at(count) * 10 + bytes.front() - '0';
        }
    }
    switch (bytes.front()) {
        case 'H':
            line_ = std::clamp(numbers[0] - 1, 0, screen_.height - 1);
            column_ = std::clamp(numbers[1] - 1, 0, screen_.width - 1);
            break;
        case 'J':
            PatBlt(context_, corner_.x, corner_.y, screen_.width * cell_.width, screen_.height * cell_.height,
                   BLACKNESS);
            column_ = line_ = 0;
            break;
        case 'K':
            PatBlt(context_, corner_.x + column_ * cell_.width, corner_.y + line_ * cell_.height,
                   (screen_.width - column_) * cell_.width, cell_.height, BLACKNESS);
            break;
        case 'm':
            for (std::size_t i = 0; i <= count; ++i) setRendition(numbers.at(i));
            useColours();
            break;
        default:
            break;
    }
    return bytes.substr(1);
}

void BareTerminal::setRendition(int code) {
    if (code <= 1) {
        bold_ = code == 1;
        if (code == 0) text_ = 7, back_ = 0;
    } else if (code == 7) {
        std::swap(text_, back_);
    } else if (code >= 40) {
        back_ = code - 40;
    } else if (code >= 30) {
        text_ = code - 30;
    }
}

void BareTerminal::useColours() {
    SetTextColor(context_, colour(text_, bold_));
    SetBkColor(context_, colour(back_, false));
}

}  // namespace kavrelon::bench
