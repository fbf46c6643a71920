#pragma once

#include <span>

#include "htmllabel/layout/Flow.h"

namespace kavrelon {

/// Finds a table's columns once all its cells are known and measured, numbers the cells' columns, and finds
/// what widths the columns and the table want. Every place where a cell starts begins a column, so that no
/// COLSPAN makes columns of its own.
void measureColumns(Flow& flow, FlowTable& table);

/// The table's outer width where `available` pixels are available.
int tableWidth(const FlowTable& table, int available);

/// Shares `total` pixels out to the columns. The widths add up to exactly that, unless it is less than the
/// columns need at least.
void setColumnWidths(std::span<const FlowColumn> columns, int total, std::span<int> widths);

}  // namespace kavrelon
