#include "htmllabel/layout/PlainText.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "htmllabel/layout/Flow.h"
#include "htmllabel/layout/FlowBuilder.h"

namespace kavrelon {
namespace {

/// Measures nothing. Spaces have a width, since a gap without one is no space.
class NoCanvas final : public Canvas {
  public:
    int pixelsPerInch() const override { return PixelScale::kPixelsPerInch; }
    FontId font(const TextFont&) override { return 0; }
    FontMetrics metrics(FontId) override { return {.spaceWidth = 1}; }
    int textWidth(FontId, std::string_view) override { return 0; }
    void drawText(FontId, Colour, Point, std::string_view) override {}
    void fill(const Rect&, Colour) override {}
    void drawBullet(Bullet, const Rect&, Colour) override {}
    void drawPicture(const Picture&, const Rect&) override {}
    void drawFocus(const Rect&) override {}
};

class NoPictures final : public PictureSource {
  public:
    const Picture* picture(std::string_view) override { return nullptr; }
};

/// Writes the words of a flow one after the other. What divides two of them waits for the second one, and of
/// several dividers the strongest counts.
class TextWriter {
  public:
    explicit TextWriter(const Flow& flow) : flow_(flow) {}

    PlainText write() && {
        for (const FlowItem& item : flow_.items) add(item);
        return std::move(result_);
    }

  private:
    enum class Divider : std::uint8_t { None, Space, Tab, Line };

    void add(const FlowItem& item) {
        switch (item.kind) {
            case FlowKind::Text: {
                const FlowText& text = flow_.texts[item.index];
                forEachWord(text, flow_, [&](std::string_view word, int, int gap, bool) {
                    if (gap > 0) divide(Divider::Space);
                    append(word, text.mark, gap);
                });
                break;
            }
            case FlowKind::Picture: {
                const FlowPicture& picture = flow_.pictures[item.index];
                if (picture.gapBefore > 0) divide(Divider::Space);
                if (!picture.alternative.empty()) append(picture.alternative, picture.mark);
                break;
            }
            case FlowKind::Marker:
                divide(Divider::Line);
                if (item.index == kNone || flow_.markers[item.index].number.empty()) break;
                append(flow_.markers[item.index].number, kNone);
                divide(Divider::Space);
                break;
            case FlowKind::CellStart:
                divide(flow_.cells[item.index].column > 0 ? Divider::Tab : Divider::Line);
                break;
            case FlowKind::Mark:
            case FlowKind::Clear:
            case FlowKind::CellEnd:
                break;
            default:
                divide(Divider::Line);
                break;
        }
    }

    void divide(Divider divider) { divider_ = std::max(divider_, divider); }

    /// `spaces` is the number of hard spaces, where the word stands behind some.
    void append(std::string_view word, std::uint32_t mark, int spaces = 1) {
        constexpr std::string_view kDividers[] = {"", " ", "\t", "\r\n"};
        std::string& text = result_.text;
        if (!text.empty()) text += kDividers[static_cast<std::size_t>(divider_)];
        if (divider_ == Divider::Space && spaces > 1) text.append(static_cast<std::size_t>(spaces - 1), ' ');
        divider_ = Divider::None;
        const std::size_t begin = text.size();
        text += word;
        if (mark == kNone) return;
        if (result_.links.empty() || result_.links.back().element != flow_.marks[mark])
            result_.links.push_back({flow_.marks[mark], begin, begin});
        result_.links.back().end = text.size();
    }

    const Flow& flow_;
    PlainText result_;
    Divider divider_ = Divider::None;
};

}  // namespace

PlainText plainText(const HTMLDocument& document) {
    Flow flow{PixelScale()};
    NoCanvas canvas;
    NoPictures pictures;
    FlowBuilder(document, {}, pictures, canvas, flow).build();
    return TextWriter(flow).write();
}

}  // namespace kavrelon
