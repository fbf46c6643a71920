#include "samplehost/win32/UserMessages.h"

#include <windows.h>

#include <cstdio>

#include "support/win32/WideText.h"

namespace kavrelon {
namespace {

bool boxesAllowed = true;

/// Whether the program was given something for the stream. A console's handle that came without the console
/// is nothing.
bool isGiven(DWORD standardHandle) {
    HANDLE const handle = GetStdHandle(standardHandle);
    return handle != nullptr && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

/// Takes part in the console of the program that started this one, for one text only: who takes part longer
/// is ended with the console, and by Ctrl+C in it.
bool writeToParentsConsole(const std::string& text) {
    const bool attached = AttachConsole(ATTACH_PARENT_PROCESS) != FALSE;
    // Some systems have let the program take part already.
    HANDLE const console =
        CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, 0, nullptr);
    bool written = false;
    if (console != INVALID_HANDLE_VALUE) {
        // The prompt is there already: a command interpreter waits for programs with a console only.
        const std::wstring wide = L"\r\n" + toWide(text);
        DWORD count = 0;
        written =
            WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &count, nullptr) != FALSE;
        CloseHandle(console);
    }
    if (attached) FreeConsole();
    return written;
}

bool write(std::FILE* stream, DWORD standardHandle, const std::string& text) {
    if (!isGiven(standardHandle)) return writeToParentsConsole(text);
    return std::fputs(text.c_str(), stream) >= 0 && std::fflush(stream) == 0;
}

/// Whether a user can see windows of this program. Those of a service nobody sees.
bool windowsAreSeen() {
    USEROBJECTFLAGS flags{};
    return !GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags, nullptr) ||
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

void showBox(const std::string& text, UINT icon) {
    if (boxesAllowed && windowsAreSeen())
        MessageBoxW(nullptr, toWide(text).c_str(), kProgramTitle, MB_OK | MB_SETFOREGROUND | icon);
}

bool writeComplaint(const std::string& sentence) {
    return write(stderr, STD_ERROR_HANDLE, "samplehost: " + sentence + '\n');
}

}  // namespace

void leaveOutMessageBoxes() {
    boxesAllowed = false;
}

void print(const std::string& text) {
    if (!write(stdout, STD_OUTPUT_HANDLE, text)) showBox(text, 0);
}

void complain(const std::string& sentence) {
    if (!writeComplaint(sentence)) showBox(sentence, MB_ICONERROR);
}

void complainQuietly(const std::string& sentence) {
    writeComplaint(sentence);
}

}  // namespace kavrelon
