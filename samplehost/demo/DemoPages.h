#pragma once

#include <memory>
#include <vector>

#include "samplehost/demo/DemoPage.h"

namespace kavrelon {

std::unique_ptr<DemoPage> makeColourPage();
std::unique_ptr<DemoPage> makeCharacterPage();
std::unique_ptr<DemoPage> makeFormPage();
std::unique_ptr<DemoPage> makeScrollPage();
std::unique_ptr<DemoPage> makeWidthPage();
std::unique_ptr<DemoPage> makeSecondScreenPage();
std::unique_ptr<DemoPage> makeHelpBoxPage();
std::unique_ptr<DemoPage> makePicturePage();
std::unique_ptr<DemoPage> makeClipboardPage();

/// All pages in the order of the menu.
std::vector<std::unique_ptr<DemoPage>> makeDemoPages();

}  // namespace kavrelon
