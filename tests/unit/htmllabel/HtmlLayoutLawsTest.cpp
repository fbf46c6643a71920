#include <gtest/gtest.h>

#include "headless/LabelEngine.h"
#include "headless/LayoutLaws.h"
#include "headless/RandomHtml.h"

namespace kavrelon {
namespace {

TEST(HtmlLayoutLawsTest, HoldForRandomDocuments) {
    constexpr unsigned kDocuments = 120;
    for (unsigned seed = 0; seed < kDocuments; ++seed) {
        const std::string html = randomHtml(seed);
        for (const int resolution : {96, 144}) {
            LabelEngine label(resolution);
            label.parse(html, {.EnableAnchors = true});
            for (const int width : {40, 160, 600}) {
                label.layOut({width, 200});
                ASSERT_EQ(
                    wordsLaw(label.document, label.layout, width) + placesLaw(label.document, label.layout),
                    "")
                    << "seed " << seed << ", " << width << " pixels at " << resolution << ": " << html;
            }
        }
    }
}

}  // namespace
}  // namespace kavrelon
