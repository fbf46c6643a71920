#pragma once

#include <windows.h>

#include <cstddef>
#include <fstream>
#include <string>

#include "gdi/GdiHandles.h"
#include "support/Geometry.h"

namespace kavrelon {

/// A bitmap in memory that can be drawn on and written to a file.
class Page {
  public:
    explicit Page(Size size) : context_(CreateCompatibleDC(nullptr)), size_(size) {
        // Without a fourth byte, which the platform leaves 0 and viewers take for transparency.
        header_ = {sizeof header_, size.width, -size.height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
        const auto rowBytes = (static_cast<std::size_t>(size.width) * 3 + 3) / 4 * 4;
        bytes_ = rowBytes * static_cast<std::size_t>(size.height);
        bitmap_.reset(CreateDIBSection(context_.get(), reinterpret_cast<const BITMAPINFO*>(&header_),
                                       DIB_RGB_COLORS, &bits_, nullptr, 0));
        if (bitmap_ != nullptr) SelectObject(context_.get(), bitmap_.get());
    }

    explicit operator bool() const { return bitmap_ != nullptr; }
    HDC context() const { return context_.get(); }
    Size size() const { return size_; }

    bool write(const std::string& path) const {
        GdiFlush();
        BITMAPFILEHEADER file{};
        file.bfType = 0x4D42;
        file.bfOffBits = sizeof file + sizeof header_;
        file.bfSize = file.bfOffBits + static_cast<DWORD>(bytes_);
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char*>(&file), sizeof file);
        out.write(reinterpret_cast<const char*>(&header_), sizeof header_);
        out.write(static_cast<const char*>(bits_), static_cast<std::streamsize>(bytes_));
        return static_cast<bool>(out.flush());
    }

  private:
    BITMAPINFOHEADER header_{};
    std::size_t bytes_ = 0;
    void* bits_ = nullptr;
    // Goes after its context, which holds it.
    Bitmap bitmap_;
    OwnedContext context_;
    Size size_;
};

}  // namespace kavrelon
