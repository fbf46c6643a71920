#include "terminal/PictureFolder.h"

#include "support/PictureName.h"
#include "terminal/TermWindow.h"

namespace kavrelon {
namespace {

std::string pathOf(std::string_view settingsFile, std::string_view name) {
    const std::size_t end = settingsFile.find_last_of("\\/:") + 1;
    const char separator = end > 0 && settingsFile[end - 1] == '/' ? '/' : '\\';
    std::string path(settingsFile.substr(0, end));
    path.append(PictureFolder::kName).append(1, separator).append(name);
    return path;
}

}  // namespace

std::shared_ptr<const Picture> PictureFolder::load(std::string_view settingsFile, std::string_view name) {
    if (settingsFile.empty() || !isPlainFileName(name)) return nullptr;
    std::erase_if(shown_, [](const auto& entry) { return entry.second.expired(); });
    const std::string path = pathOf(settingsFile, name);
    if (const auto found = shown_.find(path); found != shown_.end()) return found->second.lock();
    std::shared_ptr<const Picture> picture = platform_.loadPicture(path);
    if (picture) shown_.emplace(path, picture);
    return picture;
}

}  // namespace kavrelon
