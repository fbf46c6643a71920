#include "headless/TextProfileFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <vector>

#include "support/AsciiText.h"

namespace kavrelon {
namespace {

using Lines = std::vector<std::string>;

std::string_view trimBlanks(std::string_view text) {
    return trim(text, " \t\r");
}

bool sameName(std::string_view a, std::string_view b) {
    return std::ranges::equal(a, b, {}, asciiUpper, asciiUpper);
}

bool isHeader(std::string_view line) {
    return trimBlanks(line).starts_with('[');
}

bool isHeaderOf(std::string_view line, std::string_view section) {
    line = trimBlanks(line);
    return line.starts_with('[') && sameName(trimBlanks(line.substr(1, line.find(']') - 1)), section);
}

std::string_view keyOf(std::string_view line) {
    return trimBlanks(line.substr(0, line.find('=')));
}

std::string_view valueOf(std::string_view line) {
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) return {};
    std::string_view value = trimBlanks(line.substr(equals + 1));
    const bool quoted =
        value.size() > 1 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// A section's lines after its header, as a range of the file; both ends at the end when there is none.
struct Body {
    Lines::iterator header;
    Lines::iterator end;

    Body(Lines& lines, const std::string& section) {
        header = std::find_if(lines.begin(), lines.end(),
                              [&](const std::string& line) { return isHeaderOf(line, section); });
        end = header == lines.end() ? lines.end() : std::find_if(header + 1, lines.end(), isHeader);
    }

    Lines::iterator find(const std::string& key) const {
        if (header == end) return end;
        return std::find_if(header + 1, end, [&](const std::string& line) {
            return line.find('=') != std::string::npos && sameName(keyOf(line), key);
        });
    }
};

void store(Lines& lines, const std::string& section, const std::string& key, const std::string& value) {
    const std::string line = key + "=" + value;
    const Body body(lines, section);
    if (body.header == lines.end()) {
        lines.push_back("[" + section + "]");
        lines.push_back(line);
        return;
    }
    const auto found = body.find(key);
    if (found != body.end) {
        *found = line;
        return;
    }
    // A new key goes after the section's last line, before the blank ones that divide it from the next.
    auto place = body.end;
    while (place - 1 != body.header && trimBlanks(*(place - 1)).empty()) --place;
    lines.insert(place, line);
}

void remove(Lines& lines, const std::string& section, const std::string* key) {
    const Body body(lines, section);
    if (key == nullptr) {
        lines.erase(body.header, body.end);
    } else if (const auto found = body.find(*key); found != body.end) {
        lines.erase(found);
    }
}

}  // namespace

std::vector<std::string> TextProfileFile::lines(const std::string& path) {
    Lines lines;
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(std::move(line));
    }
    return lines;
}

bool TextProfileFile::canRead(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && std::ifstream(path).good();
}

std::string TextProfileFile::read(const std::string& path, const std::string& section, const std::string& key,
                                  const std::string& fallback, int capacity) {
    Lines stored = lines(path);
    const Body body(stored, section);
    const auto found = body.find(key);
    const std::string_view value = found == body.end ? std::string_view(fallback) : valueOf(*found);
    return std::string(value.substr(0, static_cast<std::size_t>(std::max(capacity - 1, 0))));
}

bool TextProfileFile::write(const std::string& path, const std::string& section, const std::string* key,
                            const std::string* value) {
    Lines stored = lines(path);
    if (key != nullptr && value != nullptr) {
        store(stored, section, *key, *value);
    } else {
        remove(stored, section, key);
    }
    std::string text;
    for (const std::string& line : stored) text += line + "\r\n";
    std::ofstream file(path, std::ios::binary);
    return static_cast<bool>(file << text << std::flush);
}

}  // namespace kavrelon
