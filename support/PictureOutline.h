#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "support/Geometry.h"

namespace kavrelon {

enum class PictureFormat : std::uint8_t { Bmp, Gif, Jpeg, Png, Ico, Wmf };

/// What a picture file says of its picture, read without decoding any of it.
struct PictureOutline {
    PictureFormat format;
    /// Pixels; of a metafile, those that it covers at 96 dots an inch.
    Size size;
    /// The image that counts, of the several that an icon holds: the largest, of the most colours.
    std::uint32_t frame = 0;
    /// Bytes of the file that belong to the picture; of an animation, to its first image.
    std::size_t length = 0;
    /// Where the image lies on its canvas, and how large that is; only animations tell.
    Point at{};
    Size canvas{};

    /// The canvas, grown to hold an image of this size at its place.
    Size around(Size image) const noexcept {
        return {std::max(canvas.width, at.x + image.width), std::max(canvas.height, at.y + image.height)};
    }
};

/// The largest file and picture that are looked at. They keep a picture's memory below 64 MB, whatever its
/// file claims.
constexpr std::size_t kMostPictureBytes = std::size_t{16} << 20;
constexpr std::int64_t kMostPicturePixels = std::int64_t{16} << 20;

/// Whether pixels of this extent may be made: at least one, and no more than the limit.
bool withinPictureLimits(Size size) noexcept;

/// The outline of a whole picture of a known format within the limits; nothing when the file is another kind,
/// ends too early or contradicts itself.
std::optional<PictureOutline> outlineOf(std::span<const std::uint8_t> file) noexcept;

}  // namespace kavrelon
