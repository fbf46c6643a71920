#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "headless/HeadlessLabelWindow.h"
#include "headless/HeadlessPicture.h"
#include "headless/RecordingCanvas.h"
#include "htmllabel/HTMLLabel.h"
#include "tests/unit/FailingNew.h"

namespace kavrelon {
namespace {

constexpr const char* kFirst = R"(<title>First</title><body bgcolor=#102030><p>one
<a href='http://localhost/a/long/address'>two</a><table border=1><tr><td width=40>three<td>four</table>
<ul><li>five</ul><img src=p>)";
constexpr const char* kSecond =
    R"(<title>Second &amp; last</title><body bgcolor=red background=page><h1>six</h1>
<a href=x>seven</a> eight<p><font face='Courier New, Courier' size=+3>nine</font><ol><li>ten<li>eleven</ol>
<img src=q alt='twelve &lt;'><table><tr><td>thirteen<td bgcolor=blue>fourteen<tr><td colspan=2>a much longer
text than all before</table><a name='sixteen'></a><p>fifteen<br><br><br><br>)";

/// A label that shows a document, and all that its container can see of it.
class Shown final : private HTMLLabelEvents {
  public:
    Shown() {
        window.paintFor(label);
        label->DefaultFontName("A face whose name is long");
        label->EnableAnchors(true);
        label->EnableScroll(true);
        label->attach(&window, this);
        label->DocumentHTML(kFirst);
    }
    ~Shown() override { label->attach(nullptr, nullptr); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

    /// After a paint, as every container sends one some time.
    std::string state() {
        window.repaintViewPort();
        const HTMLLabelProperties& saved = label->savedProperties();
        std::string text = label->DocumentTitle() + '|' + label->DocumentHTML() + '|' + saved.DefaultFontName;
        const auto add = [&text](auto... numbers) { ((text += ' ' + std::to_string(numbers)), ...); };
        add(saved.DefaultFontSize, saved.BackColor, static_cast<int>(window.shown().pointer));
        add(label->document().mlngBodyBgColor(), window.shown().surface.BackColor, label->vscScroll().Max,
            label->vscScroll().Value, label->vscScroll().SmallChange, label->hscScroll().Max);
        for (const HTMLElement& element : label->document().mudtElements()) {
            add(element.lngLeft, element.lngTop, element.lngRight, element.lngBottom);
            text.append(" ").append(element.strRaw).append(" ").append(element.strHref);
            for (const auto word : element.strWords) text.append("_").append(word);
        }
        return text + (window.shown().tmrHyperlinkClick ? " timer" : "") + window.shown().toolTipText;
    }
    /// What it looks like on paper.
    std::string page() {
        RecordingCanvas canvas;
        label->drawPage(canvas, {300, 300});
        std::string texts;
        for (const auto& text : canvas.texts) texts += text.text + std::to_string(text.place.left) + ' ';
        return texts;
    }

    std::shared_ptr<HTMLLabel> label = std::make_shared<HTMLLabel>();
    HeadlessLabelWindow window;

  private:
    void HyperlinkClick(const std::string&) noexcept override {}
    std::shared_ptr<const Picture> LoadImage(const std::string&) noexcept override { return picture; }
    void MouseDown(std::int16_t, std::int16_t, float, float) noexcept override {}
    void MouseMove(std::int16_t, std::int16_t, float, float) noexcept override {}
    void MouseUp(std::int16_t, std::int16_t, float, float) noexcept override {}

    std::shared_ptr<const Picture> picture = std::make_shared<HeadlessPicture>('p', true);
};

/// A step that raises or not, with one allocation failing; the state is the one before it or the one after
/// it.
TEST(HtmlMemoryTest, WhateverAllocationFailsAStepIsDoneOrNotAtAll) {
    const std::pair<const char*, std::function<void(Shown&)>> steps[] = {
        {"document", [](Shown& it) { it.label->DocumentHTML(kSecond); }},
        {"face", [](Shown& it) { it.label->DefaultFontName("Another face whose name is long"); }},
        {"size", [](Shown& it) { it.label->DefaultFontSize(14); }},
        {"colour", [](Shown& it) { it.label->BackColor(0x804020); }},
        {"hidden",
         [](Shown& it) {
             it.window.surroundings().visible = false;
             it.label->DocumentHTML(kSecond);
         }},
        {"resize",
         [](Shown& it) {
             it.window.surroundings().twips = {1500, 600};
             it.label->UserControl_Resize();
         }},
        {"page",
         [](Shown& it) {
             RecordingCanvas canvas;
             it.label->drawPage(canvas, {100, 100});
         }},
        {"link",
         [](Shown& it) {
             const HTMLElement& link =
                 it.label->document()
                     .mudtElements()[static_cast<std::size_t>(it.label->document().mintLinks()[0])];
             it.label->picViewPort_MouseUp(1, 0, {link.lngLeft + 1, link.lngTop + 1});
         }},
    };
    for (const auto& [name, step] : steps) {
        Shown whole;
        const std::string before = whole.state();
        step(whole);
        const std::string after = whole.state();
        const std::string page = whole.page();
        for (std::size_t n = 1;; ++n) {
            Shown shown;
            const Outcome outcome = withFailure(n, [&, &step = step] { step(shown); });
            const std::string now = shown.state();
            EXPECT_TRUE(now == before || (!outcome.raised && now == after))
                << name << ", allocation " << n << '\n'
                << now;
            step(shown);
            EXPECT_EQ(shown.state(), after) << name << " again after allocation " << n;
            EXPECT_EQ(shown.page(), page) << name << " again after allocation " << n;
            if (!outcome.failed) {
                EXPECT_GT(n, 1U) << name << " was to allocate something";
                break;
            }
        }
    }
}

TEST(HtmlMemoryTest, WhateverAllocationFailsALabelIsMadeAndPaintedWholeTheNextTime) {
    const std::string whole = Shown().state();
    for (std::size_t n = 1;; ++n) {
        std::unique_ptr<Shown> shown;
        const bool failed = withFailure(n, [&] { shown = std::make_unique<Shown>(); }).failed;
        EXPECT_TRUE(shown == nullptr || shown->state() == whole) << "allocation " << n;
        if (!failed) break;
    }
    EXPECT_EQ(Shown().state(), whole);
}

}  // namespace
}  // namespace kavrelon
