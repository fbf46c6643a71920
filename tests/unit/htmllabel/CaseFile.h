#pragma once

#include <fstream>
#include <string>
#include <vector>

namespace kavrelon {

/// Three lines of a file: what is looked at, a document, and what is to be seen.
struct FileCase {
    std::string what;
    std::string html;
    std::string expected;
};

/// Those of a file of this folder. Between them are remarks, which begin with "#", and empty lines.
inline std::vector<FileCase> casesOf(const std::string& file) {
    std::ifstream lines("tests/unit/htmllabel/" + file);
    std::vector<FileCase> cases;
    for (FileCase next; std::getline(lines, next.what);) {
        if (next.what.empty() || next.what.starts_with('#')) continue;
        std::getline(std::getline(lines, next.html), next.expected);
        cases.push_back(next);
    }
    return cases;
}

}  // namespace kavrelon
