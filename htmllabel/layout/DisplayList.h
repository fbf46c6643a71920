#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "htmllabel/layout/Canvas.h"
#include "htmllabel/layout/Flow.h"
#include "htmllabel/layout/TextRun.h"
#include "support/SystemColours.h"

namespace kavrelon {

/// The colour of light edges on this ground. The system's highlight is white, which cannot be seen on light
/// colours, and neither can the button face of many systems; there they are silver.
Colour lightEdgeOn(Colour ground);

enum class DrawKind : std::uint8_t { Text, Fill, Frame, Raised, Sunken, Bullet, Picture };

/// One thing to be drawn. With an empty place it is not drawn.
struct DisplayItem {
    DrawKind kind = DrawKind::Fill;
    Bullet bullet = Bullet::Disc;
    std::int16_t element = 0;
    std::uint32_t mark = kNone;  // the link that it belongs to
    std::uint32_t frame = 0;
    Rect place;  // in its frame
    std::uint32_t value =
        0;              // of Text the style, of Raised and Sunken the light edges' colour, else the colour
    int thickness = 1;  // of frames
    std::string_view text;
    const Picture* picture = nullptr;
};

/// What a laid-out page shows, in drawing order.
///
/// Items belong to frames (the page, a cell), and frames to the frames around them: the place of a frame may
/// be known later than its content. `resolve` turns all places into places on the page.
class DisplayList {
  public:
    void clear(std::size_t marks);

    /// Adds a frame to an earlier one; frame 0 is the page.
    std::uint32_t addFrame(std::uint32_t parent);
    void moveFrame(std::uint32_t frame, Point place) { frames_[frame].place = place; }
    std::size_t add(const DisplayItem& item);
    DisplayItem& item(std::size_t index) { return items_[index]; }
    void setMark(std::uint32_t mark, std::uint32_t frame, Point place);

    /// To be called once all is placed: from then on places are pixels of the page, and the top left corner
    /// of frame 0 is at `origin`.
    void resolve(Point origin);
    /// The right and bottom ends of everything drawn.
    Size extent() const { return extent_; }
    /// The box around all pieces of a mark; an empty one at its place when it has none.
    const Rect& markPlace(std::uint32_t mark) const { return marks_[mark].place; }

    /// Draws what touches `part`.
    void draw(Canvas& canvas, std::span<const TextStyle> styles, const Rect& part) const;
    std::vector<TextRun> runs() const;

  private:
    struct Frame {
        std::uint32_t parent = 0;
        Point place;
    };
    struct Mark {
        std::uint32_t frame = 0;
        Rect place;
        bool hasPieces = false;
    };
    struct Band {
        int top = 0;
        int bottom = 0;
    };

    void extendMark(const DisplayItem& item);
    void extendBands(std::size_t index);

    std::vector<Frame> frames_;
    std::vector<DisplayItem> items_;
    std::vector<Mark> marks_;
    std::vector<Band> bands_;  // how far each `kItemsInBand` items reach: drawing skips those out of sight
    Size extent_;
};

}  // namespace kavrelon
