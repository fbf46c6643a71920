#pragma once

#include <span>

#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// Once all cells of a table are known and measured: finds its columns (every place where a cell starts
/// begins one, so that no COLSPAN makes columns of its own), gives the cells their numbers there, and finds
/// what widths the columns and the table want.
void measureColumns(Flow& flow, FlowTable& table);

/// The table's outer width where this much is available.
int tableWidth(const FlowTable& table, int available);

/// Deals `total` pixels out to the columns. The widths add up to exactly that, as long as it is no less than
/// the columns need.
void setColumnWidths(std::span<const FlowColumn> columns, int total, std::span<int> widths);

}  // namespace kavrelon
