#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "support/Geometry.h"

namespace kavrelon {

enum class PictureFormat : std::uint8_t { Bmp, Gif, Jpeg, Png, Ico, Wmf };

/// What a picture file says about its picture, read without decoding it.
struct PictureOutline {
    PictureFormat format;
    /// In pixels; for a metafile, at 96 dots an inch.
    Size size;
    /// For icons, which hold several images: the index of the one to use, the largest with the most colours.
    std::uint32_t frame = 0;
    /// Bytes of the file that belong to the picture; for an animation, to its first image.
    std::size_t length = 0;
    /// The image's place on its canvas and the canvas's size. Set for animations only.
    Point at{};
    Size canvas{};

    /// Size of the canvas, enlarged where needed to hold an image of this size at `at`.
    Size around(Size image) const noexcept {
        return {std::max(canvas.width, at.x + image.width), std::max(canvas.height, at.y + image.height)};
    }
};

/// Larger files and pictures are refused. This keeps a picture's memory below 64 MB, whatever its file
/// claims.
constexpr std::size_t kMostPictureBytes = std::size_t{16} << 20;
constexpr std::int64_t kMostPicturePixels = std::int64_t{16} << 20;

/// Whether a picture of this size may be made: at least one pixel, and no more than the limit.
bool withinPictureLimits(Size size) noexcept;

/// The outline of a complete picture in one of the known formats and within the limits. Nothing when the file
/// has another format, ends too early or contradicts itself.
std::optional<PictureOutline> outlineOf(std::span<const std::uint8_t> file) noexcept;

}  // namespace kavrelon
