#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

std::vector<std::unique_ptr<DemoPage>> makeDemoPages() {
    std::vector<std::unique_ptr<DemoPage>> pages;
    pages.push_back(makeColourPage());
    pages.push_back(makeCharacterPage());
    pages.push_back(makeFormPage());
    pages.push_back(makeScrollPage());
    pages.push_back(makeWidthPage());
    pages.push_back(makeSecondScreenPage());
    pages.push_back(makeHelpBoxPage());
    pages.push_back(makePicturePage());
    pages.push_back(makeClipboardPage());
    return pages;
}

}  // namespace kavrelon
