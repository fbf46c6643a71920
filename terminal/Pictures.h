#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace kavrelon {

/// The pictures that the host has put over the screen, by number.
class Pictures {
  public:
    struct Picture {
        std::int16_t topX = 0;
        std::int16_t topY = 0;
        std::int16_t bottomX = 0;
        std::int16_t bottomY = 0;
        std::string name;
    };

    /// A picture takes the place of an older one of its number.
    void put(std::int16_t number, Picture picture) { pictures_[number] = std::move(picture); }
    void clear(std::int16_t number) { pictures_.erase(number); }
    const std::map<std::int16_t, Picture>& all() const { return pictures_; }

  private:
    std::map<std::int16_t, Picture> pictures_;
};

}  // namespace kavrelon
