#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "samplehost/HostOptions.h"
#include "samplehost/com/ComFailure.h"
#include "samplehost/win32/HelpViewer.h"
#include "samplehost/win32/HostProgram.h"

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

int complain(const std::exception& error, int status) {
    std::fprintf(stderr, "samplehost: %s\n", error.what());
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> arguments(argv + 1, argv + argc);
        const HostOptions options = HostOptions::parse(arguments);
        if (options.help) {
            std::fputs(HostOptions::helpText().c_str(), stdout);
            return 0;
        }
        const Apartment apartment;
        if (options.helpViewerFile) return HelpViewer(options).run();
        return HostProgram(options).run();
    } catch (const HostOptionsError& error) {
        return complain(error, kBadOptions);
    } catch (const std::exception& error) {
        return complain(error, kFailed);
    }
}
