#include <gmock/gmock.h>
#include <pthread.h>

#include <algorithm>

#include "headless/HtmlDocuments.h"
#include "headless/LabelEngine.h"

namespace kavrelon {
namespace {

/// What became of a document.
struct Outcome {
    int elements = 0;
    int drawn = 0;  // characters that are no spaces
    int width = 0;
    std::string last;  // text on the page
};

Outcome outcomeOf(const std::string& html) {
    LabelEngine label;
    label.parse(html);
    label.layOut({kPageWidth, 0});
    label.draw();
    Outcome outcome{label.document.mintElementCount(), 0, label.layout.size().width, ""};
    for (const TextRun& run : label.layout.runs()) {
        outcome.drawn += static_cast<int>(std::ranges::count_if(run.text, [](char c) { return c != ' '; }));
        outcome.last = run.text;
    }
    return outcome;
}

/// Works on a thread with a stack as small as that of many hosts' threads.
Outcome outcomeOnSmallStack(const std::string& html) {
    std::pair<std::string, Outcome> work{html, {}};
    const auto run = [](void* context) -> void* {
        auto& [text, outcome] = *static_cast<std::pair<std::string, Outcome>*>(context);
        outcome = outcomeOf(text);
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_t thread{};
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{256} * 1024), 0);
    EXPECT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return work.second;
}

TEST(HtmlHardDocumentsTest, KeepWhatTheyHold) {
    constexpr std::size_t kLength = 32700;
    constexpr int kAnyWidth = 150000;
    const struct {
        const char* name;
        int elements, drawn, mostWidth;
        const char* last;
    } cases[] = {
        {"bold", 10904, 0, 600, ""},
        {"signs", 4, 0, 600, ""},
        {"stray-signs", 2, 0, 600, ""},
        {"empty-tags", 16354, 0, 600, ""},
        {"attributes", 6, 1, 600, "x"},
        {"nested-tables", 6731, 961, 5000, "x"},
        {"spans", 12472, 7263, 50000, "negative"},
        {"widths", 3634, 968, 33000, "d"},
        {"open-comment", 3, 13056, 600, nullptr},
        {"open-tag", 3, 13056, 600, nullptr},
        {"open-quotes", 2728, 5448, kAnyWidth, "word"},
        {"entities", 5, 20433, kAnyWidth, nullptr},
        {"bytes", 5, 31641, 1000, "x"},
        {"unclosed", 19073, 2724, 600, "x"},
        {"stray-closers", 8609, 1721, 600, "x"},
        {"lists", 10903, 3633, 600, "x"},
        {"too-long", 8936, 11912, 600, "word"},
    };
    for (const auto& [name, elements, drawn, mostWidth, last] : cases) {
        SCOPED_TRACE(name);
        const auto* const kind = findHtmlDocumentKind(name);
        ASSERT_NE(kind, nullptr);
        const Outcome outcome = outcomeOnSmallStack(kind->make(kLength));
        EXPECT_EQ(outcome.elements, elements);
        EXPECT_EQ(outcome.drawn, drawn);
        EXPECT_GE(outcome.width, kPageWidth);
        EXPECT_LE(outcome.width, mostWidth);
        if (last != nullptr) {
            EXPECT_EQ(outcome.last, last);
        }
    }
}

TEST(HtmlHardDocumentsTest, LongWordWidensThePage) {
    const Outcome outcome = outcomeOnSmallStack(std::string(32700, 'x'));
    EXPECT_EQ(outcome.drawn, 32700);
    EXPECT_EQ(outcome.width, 4 + 32700 * 6 + 4);
}

}  // namespace
}  // namespace kavrelon
