#include "terminal/win32/Win32Launcher.h"

#include <windows.h>

#include <shellapi.h>

#include <vector>

#include "gdi/GdiHandles.h"

namespace kavrelon {
namespace {

struct CloseKernelObject {
    void operator()(HANDLE object) const noexcept { CloseHandle(object); }
};
using KernelObject = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseKernelObject>;

/// The system error that a failed result of the shell means. Its own numbers end where the shell's begin.
DWORD systemError(long result) {
    switch (result) {
        case 0:
            return ERROR_NOT_ENOUGH_MEMORY;
        case SE_ERR_SHARE:
            return ERROR_SHARING_VIOLATION;
        case SE_ERR_ASSOCINCOMPLETE:
        case SE_ERR_NOASSOC:
            return ERROR_NO_ASSOCIATION;
        default:
            return static_cast<DWORD>(result);
    }
}

}  // namespace

long Win32Launcher::shellExecute(const std::string& program, const std::string& parameters,
                                 const std::string& directory, int showStyle) {
    const char* folder = directory.empty() ? nullptr : directory.c_str();
    const HINSTANCE result =
        ShellExecuteA(nullptr, nullptr, program.c_str(), parameters.c_str(), folder, showStyle);
    return static_cast<long>(reinterpret_cast<INT_PTR>(result));
}

long Win32Launcher::startProgram(const std::string& commandLine, int showStyle) {
    // The platform writes into the command line.
    std::vector<char> writable(commandLine.c_str(), commandLine.c_str() + commandLine.size() + 1);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = static_cast<WORD>(showStyle);
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return 0;
    }
    const KernelObject processHandle(process.hProcess);
    const KernelObject threadHandle(process.hThread);
    return static_cast<long>(process.dwProcessId);
}

std::string Win32Launcher::failureText(long result) {
    char text[256] = {};
    const DWORD length = FormatMessageA(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
        systemError(result), 0, text, sizeof text, nullptr);
    return length > 0 ? std::string(text, length) : "error " + std::to_string(result);
}

}  // namespace kavrelon
