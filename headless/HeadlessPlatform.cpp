#include "headless/HeadlessPlatform.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "headless/HeadlessHelpWindow.h"
#include "headless/HeadlessWindow.h"
#include "support/PictureOutline.h"

namespace kavrelon {
namespace {

/// A picture that was not decoded may have holes for all that is known of it.
std::shared_ptr<const Picture> pictureInFile(const std::string& path) {
    constexpr char kLetter = '#';
    std::ifstream file(path, std::ios::binary);
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
    const std::optional<PictureOutline> outline = outlineOf(bytes);
    if (!outline) return nullptr;
    return std::make_shared<HeadlessPicture>(kLetter, false, outline->around(outline->size));
}

}  // namespace

HeadlessPlatform::HeadlessPlatform(ProfileFile& profiles) : profiles_(profiles) {
    desktop.rectangleOf = [this](WindowId id) {
        const HeadlessWindow* window = windowOf(id);
        return window == nullptr ? Rect{} : window->rectangle();
    };
    desktop.isShown = [this](WindowId id) {
        const HeadlessWindow* window = windowOf(id);
        return window != nullptr && window->visible() && window->state() != WindowState::Minimised;
    };
}

HeadlessWindow* HeadlessPlatform::windowOf(const TermWindowEvents& events) const {
    const auto found = std::ranges::find_if(desktop.terminalWindows, [&](const HeadlessWindow* window) {
        return window->events().get() == &events;
    });
    return found == desktop.terminalWindows.end() ? nullptr : *found;
}

std::unique_ptr<TermWindow> HeadlessPlatform::createWindow(std::weak_ptr<TermWindowEvents> events) {
    desktop.onMessages();
    onCreate();
    return std::make_unique<HeadlessWindow>(desktop, std::move(events));
}

std::unique_ptr<HelpWindow> HeadlessPlatform::createHelpWindow(std::weak_ptr<HelpWindowEvents> events) {
    desktop.onMessages();
    onCreate();
    return std::make_unique<HeadlessHelpWindow>(desktop, std::move(events));
}

const HeadlessWindow* HeadlessPlatform::windowOf(WindowId id) const {
    const auto found = std::ranges::find(desktop.terminalWindows, id, &HeadlessWindow::id);
    return found == desktop.terminalWindows.end() ? nullptr : *found;
}

std::shared_ptr<const Picture> HeadlessPlatform::loadPicture(const std::string& path) {
    picturesLookedFor.push_back(path);
    const auto found = pictureFiles.find(path);
    if (found != pictureFiles.end()) return std::make_shared<HeadlessPicture>(found->second);
    return pictureInFile(path);
}

void HeadlessPlatform::processMessages() {
    while (!pendingMessages.empty()) {
        const auto message = std::move(pendingMessages.front());
        pendingMessages.pop_front();
        message();
    }
}

}  // namespace kavrelon
