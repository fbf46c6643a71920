#include "htmllabel/layout/TableWriter.h"

#include <algorithm>

#include "htmllabel/layout/ElementValues.h"
#include "htmllabel/layout/TableColumns.h"

namespace kavrelon {
namespace {

constexpr int kMostBorder = 50;
constexpr int kMostPadding = 1000;
constexpr std::int32_t kTop = 3;
// More columns than any row has cells: columns are counted once all cells are known.
constexpr std::uint32_t kWholeRow = 1U << 30;

}  // namespace

void TableWriter::openTable(const HTMLElement& tag) {
    const auto index = static_cast<std::uint32_t>(flow_.tables.size());
    FlowTable table;
    const PixelScale& scale = flow_.scale;
    table.width = scaled(givenWidth(tag), scale);
    table.height = scaled(givenHeight(tag), scale);
    table.border = scale(clampPixels(tag.intBorder, kMostBorder));
    table.cellEdge = table.border > 0 ? scale(1) : 0;
    table.padding = scale(clampPixels(tag.intCellPadding, kMostPadding));
    table.spacing = scale(clampPixels(tag.intCellSpacing, kMostPadding));
    table.background = tag.lngBgColor;
    table.hasBackground = tag.blnHasBgColor;
    table.align = givenAlign(tag, writer_.blocks().top().align);
    table.floats = tag.alignsLeft || tag.blnAlignRight;
    table.gap = gap_;
    flow_.tables.push_back(table);
    writer_.openTable(index);
    styles_.enterScope();
    open_.emplace_back().table = index;
}

void TableWriter::closeTable() {
    if (open_.empty()) return;
    closeCell();
    const std::uint32_t table = open_.back().table;
    open_.pop_back();
    styles_.leaveScope();
    measureColumns(flow_, flow_.tables[table]);
    writer_.closeTable(table);
}

void TableWriter::closeAll() {
    while (!open_.empty()) closeTable();
}

void TableWriter::beginRow(const Row& row) {
    OpenTable& open = open_.back();
    open.inRow = true;
    open.rowHasCells = false;
    open.nextColumn = 0;
    open.row = row;
}

void TableWriter::openRow(const HTMLElement& tag) {
    if (open_.empty()) return;
    closeRow();
    beginRow({givenAlign(tag, Align::Left), tag.lngBgColor, tag.blnHasBgColor, tag.lngVAlign,
              scaled(givenHeight(tag), flow_.scale)});
}

void TableWriter::closeRow() {
    if (open_.empty()) return;
    closeCell();
    open_.back().inRow = false;
}

void TableWriter::openCell(const HTMLElement& tag) {
    if (open_.empty()) return;
    closeCell();
    if (!open_.back().inRow) beginRow({});
    const Row& row = open_.back().row;
    FlowCell cell;
    cell.span = static_cast<std::uint32_t>(std::max<int>(tag.intColSpan, 1));
    cell.width = scaled(givenWidth(tag), flow_.scale);
    cell.height = larger(scaled(givenHeight(tag), flow_.scale), row.height);
    cell.hasBackground = tag.blnHasBgColor || row.hasBackground;
    cell.background = tag.blnHasBgColor ? tag.lngBgColor : row.background;
    const bool centred = row.align == Align::Left && tag.isHeaderCell;
    cell.align = givenAlign(tag, centred ? Align::Center : row.align);
    cell.keepsLines = tag.noWrap;
    cell.verticalAlign = tag.lngVAlign;
    if (tag.lngVAlign == kTop && row.verticalAlign > kTop && !tag.hasVAlign) {
        cell.verticalAlign = row.verticalAlign;
    }
    beginCell(cell);
    styles_.open(tag);
}

void TableWriter::openImpliedCell() {
    FlowCell cell;
    if (!open_.back().inRow) {
        beginRow({});
        cell.span = kWholeRow;
    }
    beginCell(cell);
    // The row is for this cell alone.
    if (cell.span == kWholeRow) open_.back().inRow = false;
}

void TableWriter::beginCell(FlowCell cell) {
    OpenTable& open = open_.back();
    FlowTable& table = flow_.tables[open.table];
    if (!open.rowHasCells) ++table.rowCount;
    open.rowHasCells = true;
    cell.row = table.rowCount - 1;
    cell.column = open.nextColumn;
    open.nextColumn += cell.span;
    open.cell = static_cast<std::uint32_t>(flow_.cells.size());
    if (table.firstCell == kNone) {
        table.firstCell = open.cell;
    } else {
        flow_.cells[table.lastCell].next = open.cell;
    }
    table.lastCell = open.cell;
    flow_.cells.push_back(cell);
    writer_.openCell(open.cell);
    styles_.enterScope();
}

void TableWriter::closeCell() {
    if (open_.empty() || open_.back().cell == kNone) return;
    styles_.leaveScope();
    writer_.closeCell(open_.back().cell);
    open_.back().cell = kNone;
}

}  // namespace kavrelon
