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
#include "tools/win32/Page.h"

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
    const GdiCanvas::Target target(canvas, page.context());
    layout.draw(canvas, {0, 0, page.size().width, page.size().height});
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
