// replay FILE: runs a scripted session on the plug-in and prints a JSON line for each thing that happens.

#include <fstream>
#include <iostream>
#include <string>

#include "tools/ReplaySession.h"

namespace {

constexpr const char* kUsage = "usage: replay [--ini SETTINGS] FILE (- is standard input)\n";
constexpr const char* kNoSettings = "/nonexistent/settings.ini";
constexpr int kMalformed = 2;

int runScript(std::istream& input, const std::string& name, const std::string& iniFile) {
    using namespace kavrelon;
    ReplaySession session(std::cout, iniFile);
    ReplayScript script(input);
    try {
        for (ReplayLine line; script.next(line);) session.run(line);
    } catch (const ReplaySyntaxError& error) {
        std::cout.flush();
        std::cerr << name << ':' << error.line() << ": " << error.what() << '\n';
        return kMalformed;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::string iniFile = kNoSettings;
    int next = 1;
    if (argc > 2 && std::string(argv[next]) == "--ini") {
        iniFile = argv[2];
        next = 3;
    }
    if (next + 1 != argc) {
        std::cerr << kUsage;
        return kMalformed;
    }
    const std::string name = argv[next];
    if (name == "-") return runScript(std::cin, "standard input", iniFile);
    std::ifstream file(name, std::ios::binary);
    if (!file) {
        std::cerr << name << ": cannot be opened\n";
        return kMalformed;
    }
    return runScript(file, name, iniFile);
}
