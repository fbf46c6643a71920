#include "support/PictureOutline.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <string_view>

namespace kavrelon {
namespace {

using Outline = std::optional<PictureOutline>;

/// A file's bytes; reading past the end gives 0.
class Bytes {
  public:
    explicit Bytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    bool holds(std::uint64_t bytes) const { return bytes <= bytes_.size(); }
    std::uint8_t at(std::size_t place) const { return place < bytes_.size() ? bytes_[place] : 0; }
    std::uint32_t little16(std::size_t place) const { return at(place) | std::uint32_t{at(place + 1)} << 8U; }
    std::uint32_t little32(std::size_t place) const { return little16(place) | little16(place + 2) << 16U; }
    std::uint32_t big16(std::size_t place) const { return std::uint32_t{at(place)} << 8U | at(place + 1); }
    std::uint32_t big32(std::size_t place) const { return big16(place) << 16U | big16(place + 2); }
    bool says(std::string_view text, std::size_t place = 0) const {
        return holds(place + text.size()) &&
               std::equal(text.begin(), text.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(place),
                          [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
    }
    Bytes from(std::size_t place, std::size_t length) const { return Bytes(bytes_.subspan(place, length)); }

  private:
    std::span<const std::uint8_t> bytes_;
};

constexpr std::string_view kPngSignature = "\x89PNG\r\n\x1A\n";

Size sizeOf(std::uint32_t width, std::uint32_t height) {
    constexpr std::uint32_t kMost = std::numeric_limits<int>::max();
    return {static_cast<int>(std::min(width, kMost)), static_cast<int>(std::min(height, kMost))};
}

std::int32_t signed16(std::uint32_t value) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
}

Outline checked(PictureFormat format, Size size, std::size_t length) {
    if (!withinPictureLimits(size)) return std::nullopt;
    return PictureOutline{format, size, 0, length};
}

Outline bmpOutline(const Bytes& file) {
    constexpr std::uint32_t kCoreHeader = 12;
    enum Compression : std::uint32_t { None = 0, Rle8 = 1, Rle4 = 2, BitFields = 3 };
    const bool core = file.little32(14) == kCoreHeader;
    const auto height = static_cast<std::int32_t>(file.little32(22));
    // A negative height means rows from the top down.
    const Size size =
        core ? sizeOf(file.little16(18), file.little16(20))
             : sizeOf(file.little32(18), static_cast<std::uint32_t>(std::abs(std::int64_t{height})));
    if (!withinPictureLimits(size)) return std::nullopt;
    const std::uint64_t bits = core ? file.little16(24) : file.little16(28);
    const std::uint32_t compression = core ? std::uint32_t{None} : file.little32(30);
    std::uint64_t pixels = 0;
    if (compression == None || compression == BitFields) {
        const auto width = static_cast<std::uint64_t>(size.width);
        pixels = (width * bits + 31) / 32 * 4 * static_cast<std::uint64_t>(size.height);
    } else if (compression == Rle8 || compression == Rle4) {
        pixels = file.little32(34);
    }
    if (pixels == 0 || !file.holds(file.little32(10) + pixels)) return std::nullopt;
    return checked(PictureFormat::Bmp, size, file.size());
}

/// The place after a run of blocks, each preceded by its length. A block of length 0 ends the run.
std::size_t afterBlocks(const Bytes& file, std::size_t place) {
    while (file.at(place) != 0) place += 1U + file.at(place);
    return place + 1;
}

std::size_t colourTable(std::uint8_t flags) {
    constexpr std::uint8_t kPresent = 0x80;
    return (flags & kPresent) != 0 ? std::size_t{3} << ((flags & 7U) + 1U) : 0;
}

Outline gifOutline(const Bytes& file) {
    constexpr std::uint8_t kExtension = 0x21;
    constexpr std::uint8_t kImage = 0x2C;
    std::size_t place = 13 + colourTable(file.at(10));
    while (file.at(place) == kExtension) place = afterBlocks(file, place + 2);
    if (file.at(place) != kImage) return std::nullopt;
    const Size size = sizeOf(file.little16(place + 5), file.little16(place + 7));
    const std::size_t end = afterBlocks(file, place + 11 + colourTable(file.at(place + 9)));
    if (!file.holds(end)) return std::nullopt;
    Outline outline = checked(PictureFormat::Gif, size, end);
    if (!outline) return std::nullopt;
    outline->at = {static_cast<int>(file.little16(place + 1)), static_cast<int>(file.little16(place + 3))};
    outline->canvas = sizeOf(file.little16(6), file.little16(8));
    return withinPictureLimits(outline->around(size)) ? outline : std::nullopt;
}

Outline jpegOutline(const Bytes& file) {
    enum Marker : std::uint8_t { FirstFrame = 0xC0, Huffman = 0xC4, Extension = 0xC8, Arithmetic = 0xCC };
    enum Mark : std::uint8_t { LastFrame = 0xCF, Scan = 0xDA, Lead = 0xFF };
    const auto isFrame = [](std::uint8_t marker) {
        return marker >= FirstFrame && marker <= LastFrame && marker != Huffman && marker != Extension &&
               marker != Arithmetic;
    };
    Size size;
    std::size_t place = 2;
    while (file.at(place) == Lead) {
        while (file.at(place) == Lead) ++place;
        const std::uint8_t marker = file.at(place++);
        if (isFrame(marker)) size = sizeOf(file.big16(place + 5), file.big16(place + 3));
        place += file.big16(place);
        if (marker != Scan) continue;
        // A picture without its end mark was cut off, and would be shown with the rest in grey.
        for (std::size_t end = file.size() - 2; end >= place; --end) {
            if (file.says("\xFF\xD9", end)) return checked(PictureFormat::Jpeg, size, end + 2);
        }
        break;
    }
    return std::nullopt;
}

Outline pngOutline(const Bytes& file) {
    constexpr std::size_t kFrame = 12;  // length, kind and check sum around the content of a chunk
    if (!file.says("IHDR", 12)) return std::nullopt;
    std::size_t place = kPngSignature.size();
    while (file.holds(place + kFrame)) {
        const std::uint64_t end = std::uint64_t{place} + kFrame + file.big32(place);
        if (!file.holds(end)) break;
        const bool last = file.says("IEND", place + 4);
        place = static_cast<std::size_t>(end);
        if (last) return checked(PictureFormat::Png, sizeOf(file.big32(16), file.big32(20)), place);
    }
    return std::nullopt;
}

/// The size of one of an icon's images, which is either a PNG file or a bitmap of twice the height.
Size iconImageSize(const Bytes& image) {
    if (image.says(kPngSignature)) {
        const Outline png = pngOutline(image);
        return png ? png->size : Size{};
    }
    return sizeOf(image.little32(4), image.little32(8) / 2);
}

std::uint32_t iconImageBits(const Bytes& image) {
    constexpr std::uint32_t kAll = 32;
    return image.says(kPngSignature) ? kAll : image.little16(14);
}

Outline icoOutline(const Bytes& file) {
    constexpr std::size_t kHeader = 6;
    constexpr std::size_t kEntry = 16;
    constexpr std::uint32_t kMostImages = 256;
    const std::uint32_t count = file.little16(4);
    if (count > kMostImages) return std::nullopt;
    Outline largest;
    std::uint32_t bits = 0;
    for (std::uint32_t index = 0; index < count; ++index) {
        const std::size_t place = kHeader + index * kEntry;
        const std::uint32_t length = file.little32(place + 8);
        const std::uint32_t start = file.little32(place + 12);
        if (!file.holds(std::uint64_t{start} + length)) return std::nullopt;
        const Bytes content = file.from(start, length);
        Outline image = checked(PictureFormat::Ico, iconImageSize(content), file.size());
        if (!image) return std::nullopt;
        image->frame = index;
        const bool deeper = largest && image->size == largest->size && iconImageBits(content) > bits;
        if (largest && image->size.width <= largest->size.width && !deeper) continue;
        largest = image;
        bits = iconImageBits(content);
    }
    return largest;
}

Outline wmfOutline(const Bytes& file) {
    constexpr std::size_t kPlacement = 22;
    constexpr std::int64_t kDotsPerInch = 96;
    const std::uint32_t unitsPerInch = file.little16(14);
    if (unitsPerInch == 0 || file.little16(kPlacement + 2) != 9) return std::nullopt;
    const auto extent = [&](std::size_t from, std::size_t to) {
        const std::int64_t units = std::abs(signed16(file.little16(to)) - signed16(file.little16(from)));
        return static_cast<std::uint32_t>((units * kDotsPerInch + unitsPerInch - 1) / unitsPerInch);
    };
    const std::uint64_t words = file.little32(kPlacement + 6);
    if (words == 0 || !file.holds(kPlacement + words * 2)) return std::nullopt;
    return checked(PictureFormat::Wmf, sizeOf(extent(6, 10), extent(8, 12)), file.size());
}

struct Signature {
    std::string_view bytes;
    Outline (*outline)(const Bytes&);
};

constexpr std::array kSignatures{
    Signature{"BM", bmpOutline},
    Signature{"GIF8", gifOutline},
    Signature{"\xFF\xD8\xFF", jpegOutline},
    Signature{kPngSignature, pngOutline},
    Signature{std::string_view("\0\0\1\0", 4), icoOutline},
    Signature{"\xD7\xCD\xC6\x9A", wmfOutline},
};

}  // namespace

bool withinPictureLimits(Size size) noexcept {
    return size.width > 0 && size.height > 0 && std::int64_t{size.width} * size.height <= kMostPicturePixels;
}

std::optional<PictureOutline> outlineOf(std::span<const std::uint8_t> file) noexcept {
    if (file.size() > kMostPictureBytes) return std::nullopt;
    const Bytes bytes(file);
    for (const Signature& signature : kSignatures) {
        if (bytes.says(signature.bytes)) return signature.outline(bytes);
    }
    return std::nullopt;
}

}  // namespace kavrelon
