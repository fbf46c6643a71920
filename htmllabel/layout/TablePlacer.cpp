#include "htmllabel/layout/TablePlacer.h"

#include <algorithm>

#include "htmllabel/layout/TableColumns.h"

namespace kavrelon {
namespace {

constexpr std::int32_t kCentre = 4;
constexpr std::int32_t kBottom = 5;

int verticalOffset(std::int32_t align, int free) {
    if (align == kCentre) return free / 2;
    return align == kBottom ? free : 0;
}

}  // namespace

std::size_t TablePlacer::addItem(std::uint32_t frame, DrawKind kind, Colour colour, int thickness) {
    DisplayItem item;
    item.kind = kind;
    item.frame = frame;
    item.value = colour;
    item.thickness = thickness;
    return list_.add(item);
}

// Backgrounds and borders are drawn before their content, so they are added here. Their places follow at the
// table's end.
void TablePlacer::start(std::uint32_t table, std::uint32_t frame, Point place, int width, Colour ground) {
    const FlowTable& shape = flow_.tables[table];
    if (shape.hasBackground) ground = shape.background;
    Open open{table, frame, place, width, ground, edges_.size(), 0, 0};
    if (shape.hasBackground) open.fill = addItem(frame, DrawKind::Fill, shape.background, 0);
    if (shape.border > 0) open.border = addItem(frame, DrawKind::Raised, lightEdgeOn(ground), shape.border);
    open_.push_back(open);
    setColumnEdges(shape, width);
}

void TablePlacer::setColumnEdges(const FlowTable& table, int width) {
    widths_.resize(table.columnCount);
    setColumnWidths({flow_.columns.data() + table.firstColumn, table.columnCount}, width - table.outside(),
                    widths_);
    int edge = table.border + table.spacing;
    for (const int column : widths_) {
        edges_.push_back(edge);
        edge += column + table.spacing;
    }
    edges_.push_back(edge);
}

TablePlacer::CellFrame TablePlacer::startCell(std::uint32_t cell) {
    const Open& open = open_.back();
    const FlowTable& table = flow_.tables[open.table];
    const FlowCell& shape = flow_.cells[cell];
    Cell& placed = cells_[cell];
    placed.left = edges_[open.firstEdge + shape.column];
    placed.width = edges_[open.firstEdge + shape.column + shape.span] - table.spacing - placed.left;
    const Colour ground = shape.hasBackground ? shape.background : open.ground;
    if (shape.hasBackground) placed.fill = addItem(open.frame, DrawKind::Fill, shape.background, 0);
    if (table.border > 0 && !shape.isEmpty) {
        placed.border = addItem(open.frame, DrawKind::Sunken, lightEdgeOn(ground), table.cellEdge);
    }
    placed.frame = list_.addFrame(open.frame);
    return {placed.frame, std::max(placed.width - 2 * table.inset(), 0), ground};
}

int TablePlacer::end() {
    const Open open = open_.back();
    const FlowTable& table = flow_.tables[open.table];
    open_.pop_back();
    edges_.resize(open.firstEdge);
    if (table.rowCount == 0) return 0;
    const int height = setRowTops(table);
    for (std::uint32_t i = table.firstCell; i != kNone; i = flow_.cells[i].next) setCell(open, i);
    const Rect place{open.place.x, open.place.y, open.place.x + open.width, open.place.y + height};
    if (table.hasBackground) list_.item(open.fill).place = place;
    if (table.border > 0) list_.item(open.border).place = place;
    return height;
}

int TablePlacer::heightOf(const Extent& given) const {
    return std::max(given.pixels, static_cast<int>(given.fraction * static_cast<float>(pageHeight_)));
}

// Each row is as high as its highest cell. What the table's own HEIGHT asks for beyond that is shared evenly.
int TablePlacer::setRowTops(const FlowTable& table) {
    tops_.assign(table.rowCount + 1, 0);
    for (std::uint32_t i = table.firstCell; i != kNone; i = flow_.cells[i].next) {
        const FlowCell& cell = flow_.cells[i];
        const int height = std::max(heightOf(cell.height), cells_[i].contentHeight + 2 * table.inset());
        tops_[cell.row] = std::max(tops_[cell.row], height);
    }
    const int rows = static_cast<int>(table.rowCount);
    int all = 2 * table.border + table.spacing * (rows + 1);
    for (const int height : tops_) all += height;
    const int free = std::max(heightOf(table.height) - all, 0);
    int top = table.border + table.spacing;
    for (int row = 0; row <= rows; ++row) {
        int& place = tops_[static_cast<std::size_t>(row)];
        const int height = place + (row < rows ? free / rows + (row < free % rows ? 1 : 0) : 0);
        place = top;
        top += height + table.spacing;
    }
    return all + free;
}

void TablePlacer::setCell(const Open& open, std::uint32_t index) {
    const FlowTable& table = flow_.tables[open.table];
    const FlowCell& shape = flow_.cells[index];
    const Cell& cell = cells_[index];
    const int left = open.place.x + cell.left;
    const int top = open.place.y + tops_[shape.row];
    const int height = tops_[shape.row + 1] - table.spacing - tops_[shape.row];
    const Rect place{left, top, left + cell.width, top + height};
    if (shape.hasBackground) list_.item(cell.fill).place = place;
    if (table.border > 0 && !shape.isEmpty) list_.item(cell.border).place = place;
    const int free = height - 2 * table.inset() - cell.contentHeight;
    list_.moveFrame(cell.frame,
                    {left + table.inset(), top + table.inset() + verticalOffset(shape.verticalAlign, free)});
}

}  // namespace kavrelon
