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

/// The light edges of what stands on this ground. The system's highlight is white, which cannot be seen on
/// light colours; there it is the button face.
Colour lightEdgeOn(Colour ground);

enum class DrawKind : std::uint8_t { Text, Fill, Frame, Raised, Sunken, Bullet, Picture };

/// One thing to be drawn. Nothing is drawn of one whose place is empty.
struct DisplayItem {
    DrawKind kind = DrawKind::Fill;
    Bullet bullet = Bullet::Disc;
    std::int16_t element = 0;
    std::uint32_t mark = kNone;  // the link that it belongs to
    std::uint32_t frame = 0;
    Rect place;               // in its frame
    std::uint32_t value = 0;  // a text's style, of Raised and Sunken the light edges' colour, else the colour
    int thickness = 1;        // of frames
    std::string_view text;
    const Picture* picture = nullptr;
};

/// What a laid-out page shows, in drawing order.
///
/// Items stand in frames (the page, a cell), and frames in frames around them, whose places may be settled
/// later than their content. `resolve` turns all places into places on the page.
class DisplayList {
  public:
    void clear(std::size_t marks);

    /// A frame in another one, made earlier; frame 0 is the page.
    std::uint32_t addFrame(std::uint32_t parent);
    void moveFrame(std::uint32_t frame, Point place) { frames_[frame].place = place; }
    std::size_t add(const DisplayItem& item);
    DisplayItem& item(std::size_t index) { return items_[index]; }
    void setMark(std::uint32_t mark, std::uint32_t frame, Point place);

    /// Once all is placed: from here on places are pixels of the page, the top left corner of frame 0
    /// standing at `origin`.
    void resolve(Point origin);
    /// The right and bottom ends of all that is drawn.
    Size extent() const { return extent_; }
    /// Where the mark's pieces stand, all together; an empty box when it has none.
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
    std::vector<Band> bands_;  // what so many items together reach from and to
    Size extent_;
};

}  // namespace kavrelon
