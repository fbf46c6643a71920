// htmlpicture WIDTH[xHEIGHT] [FILE OUT.bmp]...: draws HTML documents, as the label does, on pages of WIDTH
// pixels, of which HEIGHT are seen at once, at the system's resolution. Pictures are looked for in a
// document's folder.

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "gdi/GdiHandles.h"
#include "gdi/GdiPicture.h"
#include "htmllabel/LabelPictures.h"
#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Layout.h"
#include "htmllabel/win32/GdiCanvas.h"

namespace kavrelon {
namespace {

constexpr int kFailed = 1;
constexpr int kMisused = 2;

/// The pictures of a folder; each is read when it is first asked for.
class FolderPictures final : public PictureSource {
  public:
    explicit FolderPictures(std::filesystem::path folder) : folder_(std::move(folder)) {}

    const Picture* picture(std::string_view source) override {
        if (!pictures_.asked(source)) {
            pictures_.keep(std::string(source), GdiPicture::load((folder_ / source).wstring()));
        }
        return pictures_.picture(source);
    }

  private:
    std::filesystem::path folder_;
    LabelPictures pictures_;
};

/// A bitmap in memory that can be drawn on and written to a file.
class Page {
  public:
    explicit Page(Size size) : context_(CreateCompatibleDC(nullptr)) {
        // Without a fourth byte, which the platform leaves 0 and viewers take for transparency.
        header_ = {sizeof header_, size.width, -size.height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
        const auto rowBytes = (static_cast<std::size_t>(size.width) * 3 + 3) / 4 * 4;
        bytes_ = rowBytes * static_cast<std::size_t>(size.height);
        bitmap_.reset(CreateDIBSection(context_.get(), reinterpret_cast<const BITMAPINFO*>(&header_),
                                       DIB_RGB_COLORS, &bits_, nullptr, 0));
    }

    explicit operator bool() const { return bitmap_ != nullptr; }

    void draw(const Layout& layout, GdiCanvas& canvas) {
        const Selected selected(context_.get(), bitmap_.get());
        const GdiCanvas::Target target(canvas, context_.get());
        layout.draw(canvas, {0, 0, static_cast<int>(header_.biWidth), static_cast<int>(-header_.biHeight)});
        GdiFlush();
    }

    bool write(const std::string& path) const {
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
    OwnedContext context_;
    BITMAPINFOHEADER header_{};
    std::size_t bytes_ = 0;
    void* bits_ = nullptr;
    Bitmap bitmap_;
};

int drawDocument(const std::string& path, Size view, const std::string& result) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::cerr << path << ": cannot be opened\n";
        return kFailed;
    }
    HTMLDocument document;
    document.setDocument(std::string(std::istreambuf_iterator<char>(in), {}), {.EnableAnchors = true});
    GdiCanvas canvas;
    FolderPictures pictures(std::filesystem::path(path).parent_path());
    Layout layout;
    layout.measure(document, {}, pictures, canvas);
    layout.place(document, view.width, view.height);
    const Size size = layout.size();
    // There are no bitmaps without pixels.
    Page page({std::max(size.width, 1), std::max(size.height, 1)});
    if (!page) {
        std::cerr << path << ": the page is too large to draw\n";
        return kFailed;
    }
    page.draw(layout, canvas);
    if (page.write(result)) return 0;
    std::cerr << result << ": cannot be written\n";
    return kFailed;
}

}  // namespace
}  // namespace kavrelon

int main(int argc, char** argv) {
    kavrelon::Size view;
    if (argc > 1 && argc % 2 == 0) {
        const std::string text = argv[1];
        const auto cross = text.find('x');
        view.width = std::atoi(text.c_str());
        if (cross != std::string::npos) view.height = std::atoi(text.c_str() + cross + 1);
    }
    if (view.width <= 0) {
        std::cerr << "usage: htmlpicture WIDTH[xHEIGHT] [FILE OUT.bmp]...\n";
        return kavrelon::kMisused;
    }
    // Otherwise the system scales the picture itself.
    SetProcessDPIAware();
    int worst = 0;
    for (int next = 2; next < argc; next += 2)
        worst = std::max(worst, kavrelon::drawDocument(argv[next], view, argv[next + 1]));
    return worst;
}
