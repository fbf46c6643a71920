#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "support/Picture.h"

namespace kavrelon {

class TermPlatform;

/// The pictures that the remote side may show: the files of the folder "Pictures" next to the settings file.
/// Every picture name from the remote side comes here, for whatever use.
class PictureFolder {
  public:
    static constexpr std::string_view kName = "Pictures";

    /// The platform must outlive the folder.
    explicit PictureFolder(TermPlatform& platform) : platform_(platform) {}

    /// The picture of a name; null when the name is refused, in which case nothing is opened, when there is
    /// no settings file, and when the file is no picture. A picture that is still shown somewhere is shared.
    std::shared_ptr<const Picture> load(std::string_view settingsFile, std::string_view name);

  private:
    TermPlatform& platform_;
    std::map<std::string, std::weak_ptr<const Picture>, std::less<>> shown_;
};

}  // namespace kavrelon
