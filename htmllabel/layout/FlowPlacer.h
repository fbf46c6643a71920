#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "htmllabel/layout/DisplayList.h"
#include "htmllabel/layout/Flow.h"
#include "htmllabel/layout/LineBuilder.h"
#include "htmllabel/layout/TablePlacer.h"

namespace kavrelon {

/// Sets a flow at one width, in one walk over its items. The page and the open cells are on a stack.
class FlowPlacer {
  public:
    /// `pageHeight` is what heights given in percent count from.
    FlowPlacer(const Flow& flow, DisplayList& list, int pageHeight)
        : flow_(flow), list_(list), line_(flow), tables_(flow, list, pageHeight) {}

    /// Sets the whole flow into frame 0, on a ground of this colour. Returns the height that it takes.
    int place(int width, Colour ground);

  private:
    /// What floats at one side: where it ends, towards the text and below.
    struct Floats {
        int edge = 0;
        int bottom = 0;
    };
    /// The page or a cell, as far as it is filled. Places are relative to its frame.
    struct Container {
        std::uint32_t frame = 0;
        int width = 0;
        Colour ground = 0;
        int y = 0;
        int gap = 0;        // wanted above what comes next
        bool atTop = true;  // where no gap is wanted
        FlowBlock block;
        std::uint32_t marker = kNone;  // of the item whose first line is not set yet
        int markerIndent = 0;          // where the text of the list begins
        int markerBottom = 0;          // where the last marker ends
        int deepestIndent = 0;         // of its lines, both sides together
        Floats left;
        Floats right;
    };
    struct OpenTable {
        bool floats = false;
        int top = 0;
        int edge = 0;  // of a table that floats
    };
    struct Span {
        int left = 0;
        int width = 0;
    };

    void item(const FlowItem& item);
    void text(const FlowText& text);
    void picture(std::uint32_t index);
    bool floatPicture(const FlowPicture& picture);
    /// Makes room for something of this width at a side. False when less than half of the line would be left.
    bool startFloat(Align side, int width, Point& corner);
    void endFloat(Align side, int edge, int bottom);
    void token(const LineToken& token);
    /// Ends lines, and moves below floats, until a token fits or there is no way to make it fit.
    void makeRoom(const LineToken& token);
    void finishLine(std::size_t count);
    void finishLine() { finishLine(line_.size()); }
    /// Places the marks that no line follows.
    void setMarks();
    void lineBreak(const TextStyle& style);
    void block(const FlowBlock& block);
    void rule(const FlowRule& rule);
    void startMarker(std::uint32_t index);
    void flushMarker();
    void setMarker(int baseline);
    /// The style of the marker that waits for its line; without a marker one of no height.
    TextStyle markerShape() const;
    void startTable(std::uint32_t index);
    void endTable(const FlowTable& table);
    void startCell(std::uint32_t index);
    void endCell(std::uint32_t index);
    int endContainer();

    Container& in() { return containers_.back(); }
    /// The indents of the next line, left and right.
    std::pair<int, int> indents() const;
    /// Where the next line could begin without indents and markers.
    int startOfLines() const;
    Span lineSpan() const;
    bool isBesideFloat() const;
    /// Where the next line begins.
    int nextTop() const;
    /// Moves down below the first of the floats next to the line that ends.
    void clearFloat();
    void moveBelow(int bottom);
    void useGap();
    void advance(int height);

    const Flow& flow_;
    DisplayList& list_;
    LineBuilder line_;
    int room_ = 0;  // on the line, once it has begun
    TablePlacer tables_;
    std::vector<Container> containers_;
    std::vector<OpenTable> openTables_;
};

}  // namespace kavrelon
