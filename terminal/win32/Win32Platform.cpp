#include "terminal/win32/Win32Platform.h"

#include "gdi/GdiPicture.h"
#include "helpbox/win32/Win32HelpWindow.h"
#include "support/win32/Messages.h"
#include "support/win32/WideText.h"
#include "terminal/win32/Win32TermWindow.h"

namespace kavrelon {

Win32Platform::Win32Platform(HINSTANCE module) : windowClass_(module) {}

std::unique_ptr<TermWindow> Win32Platform::createWindow(std::weak_ptr<TermWindowEvents> events) {
    return std::make_unique<Win32TermWindow>(windowClass_, std::move(events));
}

std::unique_ptr<HelpWindow> Win32Platform::createHelpWindow(std::weak_ptr<HelpWindowEvents> events) {
    return std::make_unique<Win32HelpWindow>(windowClass_.module(), std::move(events));
}

std::shared_ptr<const Picture> Win32Platform::loadPicture(const std::string& path) {
    return GdiPicture::load(toWide(path));
}

void Win32Platform::processMessages() {
    letMessagesThrough();
}

}  // namespace kavrelon
