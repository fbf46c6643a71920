#include <windows.h>

#include <objbase.h>

#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "samplehost/HostOptions.h"
#include "samplehost/com/ComFailure.h"
#include "samplehost/win32/HelpViewer.h"
#include "samplehost/win32/HostProgram.h"
#include "samplehost/win32/UserMessages.h"

namespace {

using namespace kavrelon;

constexpr int kBadOptions = 2;
constexpr int kFailed = 1;

/// Keeps COM started for this thread, as a single-threaded apartment: the plug-in is called on the thread
/// that made it, which must have a message loop.
class Apartment {
  public:
    Apartment() { check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "COM could not be started"); }
    ~Apartment() { CoUninitialize(); }
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

/// Asked for before anything else is done: without one the first window of all fails, somewhere in the
/// plug-in.
void requireDisplay() {
    HWND const probe =
        CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    if (probe == nullptr) throw std::runtime_error("There is no display to open a window on.");
    DestroyWindow(probe);
}

int run(const std::vector<std::string>& arguments) {
    const HostOptions options = HostOptions::parse(arguments);
    if (options.help) {
        print(HostOptions::helpText());
        return 0;
    }
    requireDisplay();
    const Apartment apartment;
    if (!options.helpViewerFile) return HostProgram(options).run();
    HelpViewer(options).run();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (HostOptions::forScripts(arguments)) leaveOutMessageBoxes();
    try {
        return run(arguments);
    } catch (const HostOptionsError& error) {
        complain(error.what());
        return kBadOptions;
    } catch (const std::exception& error) {
        complain(error.what());
        return kFailed;
    }
}
