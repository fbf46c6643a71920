#include <gmock/gmock.h>
#include <pthread.h>

#include <algorithm>

#include "bench/HtmlDocuments.h"
#include "htmllabel/HTMLDocument.h"
#include "htmllabel/HeadlessCanvas.h"
#include "htmllabel/Layout.h"

namespace kavrelon {
namespace {

class NoPictures final : public PictureSource {
  public:
    const Picture* picture(std::string_view) override { return nullptr; }
};

/// What became of a document.
struct Outcome {
    int elements = 0;
    int drawn = 0;  // characters that are no spaces
    Size page;
    std::string last;  // text on the page
};

Outcome outcomeOf(const std::string& html) {
    NoPictures pictures;
    HeadlessCanvas canvas;
    HTMLDocument document;
    Layout layout;
    document.setDocument(html, {});
    layout.measure(document, {}, pictures, canvas);
    layout.place(document, 600);
    layout.draw(canvas, {0, 0, layout.size().width, layout.size().height});
    Outcome outcome{document.count(), 0, layout.size(), ""};
    for (const TextRun& run : layout.runs()) {
        outcome.drawn += static_cast<int>(std::ranges::count_if(run.text, [](char c) { return c != ' '; }));
        outcome.last = run.text;
    }
    return outcome;
}

struct Work {
    std::string html;
    Outcome outcome;
};

void* runWork(void* context) {
    Work& work = *static_cast<Work*>(context);
    work.outcome = outcomeOf(work.html);
    return nullptr;
}

/// On a thread with a stack as small as hosts give their threads.
Outcome outcomeOnSmallStack(const std::string& html) {
    Work work{html, {}};
    pthread_attr_t attributes;
    pthread_t thread{};
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{256} * 1024), 0);
    EXPECT_EQ(pthread_create(&thread, &attributes, runWork, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return work.outcome;
}

TEST(HtmlHardDocumentsTest, KeepWhatTheyHold) {
    const struct {
        const char* name;
        std::size_t length;
        int elements, drawn, leastWidth, mostWidth;
        const char* last;
    } cases[] = {
        {"bold", 32700, 10904, 0, 600, 600, ""},
        {"signs", 8000, 4, 0, 600, 600, ""},
        {"stray-signs", 32000, 2, 0, 600, 600, ""},
        {"word", 32700, 5, 32700, 6 * 32700, 6 * 32700 + 20, nullptr},
        {"empty-tags", 20000, 10004, 0, 600, 600, ""},
        {"attributes", 30010, 6, 1, 600, 600, "x"},
        {"nested-tables", 17000, 3504, 500, 600, 10000, "x"},
    };
    for (const auto& [name, length, elements, drawn, leastWidth, mostWidth, last] : cases) {
        SCOPED_TRACE(name);
        const auto* const kind = bench::findHtmlDocumentKind(name);
        ASSERT_NE(kind, nullptr);
        const Outcome outcome = outcomeOnSmallStack(kind->make(length));
        EXPECT_EQ(outcome.elements, elements);
        EXPECT_EQ(outcome.drawn, drawn);
        EXPECT_GE(outcome.page.width, leastWidth);
        EXPECT_LE(outcome.page.width, mostWidth);
        if (last != nullptr) {
            EXPECT_EQ(outcome.last, last);
        }
    }
}

}  // namespace
}  // namespace kavrelon
