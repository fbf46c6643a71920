#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

// A second program for tests. It writes its answer to the file PROGRAM.txt, where PROGRAM is its path:
//   clipboard [MILLIS]   the clipboard's text in the ANSI code page, a NUL, and the same in UTF-8;
//                        it keeps the clipboard open for a while after that
//   anything else        its command line and, on a second line, its current directory
namespace {

/// Writes the file at once: nobody sees it with only a part of its content.
void tell(const std::string& text) {
    char program[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    const std::string path = program;
    std::ofstream(path + ".new", std::ios::binary) << text;
    MoveFileA((path + ".new").c_str(), (path + ".txt").c_str());
}

std::string clipboardTexts() {
    std::string texts;
    char utf8[1000] = "";
    if (const HANDLE ansi = GetClipboardData(CF_TEXT)) texts = static_cast<const char*>(GlobalLock(ansi));
    if (const HANDLE wide = GetClipboardData(CF_UNICODETEXT)) {
        WideCharToMultiByte(CP_UTF8, 0, static_cast<const wchar_t*>(GlobalLock(wide)), -1, utf8, sizeof utf8,
                            nullptr, nullptr);
    }
    return texts + '\0' + utf8;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc > 1 && argv[1] == std::string("clipboard")) {
        if (!OpenClipboard(nullptr)) return 1;
        tell(clipboardTexts());
        if (argc > 2) Sleep(static_cast<DWORD>(std::atoi(argv[2])));
        CloseClipboard();
    } else {
        char folder[MAX_PATH] = "";
        GetCurrentDirectoryA(MAX_PATH, folder);
        tell(std::string(GetCommandLineA()) + '\n' + folder);
    }
    return 0;
}
