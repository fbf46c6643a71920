#pragma once

#include <windows.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

#include "gdi/GdiHandles.h"
#include "support/Geometry.h"

namespace kavrelon {

constexpr COLORREF kBlack = 0;
constexpr COLORREF kWhite = 0xFFFFFF;

/// What a window's inner area shows.
class WindowImage {
  public:
    explicit WindowImage(HWND window) {
        RECT inner{};
        GetClientRect(window, &inner);
        width_ = inner.right;
        height_ = inner.bottom;
        BITMAPINFO format{};
        format.bmiHeader = {sizeof format.bmiHeader, width_, -height_, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        const OwnedContext memory(CreateCompatibleDC(nullptr));
        void* bits = nullptr;
        const Bitmap bitmap(CreateDIBSection(memory.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
        const Selected selected(memory.get(), bitmap.get());
        BitBlt(memory.get(), 0, 0, width_, height_, GetDC(window), 0, 0, SRCCOPY);
        GdiFlush();
        pixels_.resize(static_cast<std::size_t>(width_ * height_));
        const auto* pixel = static_cast<const RGBQUAD*>(bits);
        // By pointers: tests are compiled as they stand, and this is most of what many of them do.
        for (COLORREF *to = pixels_.data(), *const end = to + pixels_.size(); to != end; ++to, ++pixel)
            *to = static_cast<COLORREF>(pixel->rgbRed | pixel->rgbGreen << 8 | pixel->rgbBlue << 16);
    }

    int width() const { return width_; }
    int height() const { return height_; }
    COLORREF at(int x, int y) const { return pixels_.at(static_cast<std::size_t>(y * width_ + x)); }
    /// Whether `answers` is true of every pixel of a block.
    bool all(const Rect& block, const std::function<bool(COLORREF)>& answers) const {
        for (int y = block.top; y < block.bottom; ++y) {
            for (int x = block.left; x < block.right; ++x) {
                if (!answers(at(x, y))) return false;
            }
        }
        return true;
    }
    bool all(const Rect& block, COLORREF colour) const {
        return all(block, [=](COLORREF pixel) { return pixel == colour; });
    }
    void blacken(const Rect& block) {
        for (int y = std::max(block.top, 0); y < std::min(block.bottom, height_); ++y) {
            const int left = std::max(block.left, 0);
            const int count = std::max(std::min(block.right, width_) - left, 0);
            std::fill_n(pixels_.begin() + y * width_ + left, count, kBlack);
        }
    }
    /// The same image, each pixel replaced by what `change` gives for its place and colour.
    WindowImage with(const std::function<COLORREF(int x, int y, COLORREF colour)>& change) const {
        WindowImage changed = *this;
        for (int i = 0; COLORREF & pixel : changed.pixels_) {
            pixel = change(i % width_, i / width_, pixel);
            ++i;
        }
        return changed;
    }
    /// A pixel that differs in an image of the same size; none when all are equal.
    std::optional<Point> differenceFrom(const WindowImage& other) const {
        if (*this == other) return std::nullopt;
        const auto [ours, theirs] = std::ranges::mismatch(pixels_, other.pixels_);
        const auto index = static_cast<int>(ours - pixels_.begin());
        return Point{index % width_, index / width_};
    }
    bool operator==(const WindowImage& other) const = default;

  private:
    int width_ = 0;
    int height_ = 0;
    std::vector<COLORREF> pixels_;
};

}  // namespace kavrelon
