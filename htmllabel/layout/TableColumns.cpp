#include "htmllabel/layout/TableColumns.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

// How columns get their widths
//
// A column's wishes are its least width (below it a word or picture would stick out), the width at which no
// line ends at a hard space, the one at which no line ends at all, and what WIDTH asks for: pixels, a
// fraction of the table, or nothing (an automatic column). `measureColumns` finds them once for a document.
// Cells in one column are merged by taking the largest of each. Then the cells that cover several columns add
// what these lack, the narrowest first, so that wide ones find what the others have settled already.
//
// `setColumnWidths` shares a width out, in steps (`Step`): all columns get their least widths, then
// those without broken words, then the fractions theirs, then the pixels, then the automatic ones their
// content. A step that does not fit is the last one: what is left goes to its columns in proportion to what
// they miss. What is left after all steps goes to the automatic columns, without any to those with pixels,
// and else to the fractions.

namespace kavrelon {
namespace {

using Columns = std::span<FlowColumn>;

int preferred(const FlowColumn& column) {
    return std::max(column.min, column.pixels > 0 ? column.pixels : column.max);
}

bool isAutomatic(const FlowColumn& column) {
    return column.pixels == 0 && column.fraction == 0;
}

template <class Use>
void forEachCell(Flow& flow, const FlowTable& table, const Use& use) {
    for (std::uint32_t i = table.firstCell; i != kNone; i = flow.cells[i].next) use(flow.cells[i]);
}

void numberColumns(Flow& flow, FlowTable& table) {
    std::vector<std::uint32_t> starts;
    forEachCell(flow, table, [&](const FlowCell& cell) { starts.push_back(cell.column); });
    std::sort(starts.begin(), starts.end());
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    const auto numberOf = [&](std::uint32_t start) {
        return static_cast<std::uint32_t>(std::lower_bound(starts.begin(), starts.end(), start) -
                                          starts.begin());
    };
    forEachCell(flow, table, [&](FlowCell& cell) {
        const std::uint32_t first = numberOf(cell.column);
        cell.span = numberOf(cell.column + cell.span) - first;
        cell.column = first;
    });
    table.firstColumn = static_cast<std::uint32_t>(flow.columns.size());
    table.columnCount = static_cast<std::uint32_t>(starts.size());
    flow.columns.resize(flow.columns.size() + starts.size());
}

/// What a cell asks of the columns that it covers.
FlowColumn wishOf(const FlowCell& cell, const FlowTable& table) {
    const int around = 2 * table.inset();
    return {cell.least + around, cell.min + around, cell.max + around, cell.width.pixels,
            cell.width.fraction};
}

void merge(FlowColumn& column, const FlowColumn& wish) {
    column.least = std::max(column.least, wish.least);
    column.min = std::max(column.min, wish.min);
    column.max = std::max(column.max, wish.max);
    column.pixels = std::max(column.pixels, wish.pixels);
    column.fraction = std::max(column.fraction, wish.fraction);
}

/// Shares `amount` out in proportion to weights. The parts add up to it exactly.
template <class Weight, class Give>
void deal(std::size_t count, std::int64_t amount, const Weight& weight, const Give& give) {
    std::int64_t all = 0;
    for (std::size_t i = 0; i < count; ++i) all += weight(i);
    std::int64_t weights = 0;
    std::int64_t given = 0;
    for (std::size_t i = 0; i < count && all > 0; ++i) {
        weights += weight(i);
        const std::int64_t until = amount * weights / all;
        give(i, static_cast<int>(until - given));
        given = until;
    }
}

/// The sums over several columns.
struct ColumnSum {
    std::int64_t least = 0;
    std::int64_t min = 0;
    std::int64_t preferred = 0;
    double fraction = 0;
    std::int64_t automatic = 0;
};

/// The sums over any neighbouring columns, at once: a spanning cell that fits already costs next to nothing,
/// however many columns it covers.
class ColumnSums {
  public:
    explicit ColumnSums(Columns columns) : before_(columns.size() + 1) { add(columns); }

    /// Sums up again after the columns have changed.
    void add(Columns columns) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const FlowColumn& column = columns[i];
            const ColumnSum& sum = before_[i];
            before_[i + 1] = {sum.least + column.least, sum.min + column.min,
                              sum.preferred + preferred(column),
                              sum.fraction + static_cast<double>(column.fraction),
                              sum.automatic + (isAutomatic(column) ? 1 : 0)};
        }
    }
    ColumnSum of(std::size_t first, std::size_t count) const {
        const ColumnSum& from = before_[first];
        const ColumnSum& to = before_[first + count];
        return {to.least - from.least, to.min - from.min, to.preferred - from.preferred,
                to.fraction - from.fraction, to.automatic - from.automatic};
    }

  private:
    std::vector<ColumnSum> before_;
};

/// Widens the columns under a spanning cell: only those without a width of their own, if there are any. False
/// when they were wide enough.
bool widen(Columns columns, const ColumnSum& sum, const FlowColumn& wish, int spacing) {
    constexpr double kLeastFraction = 0.0001;
    const std::int64_t between = std::int64_t{spacing} * (static_cast<std::int64_t>(columns.size()) - 1);
    const std::int64_t least = wish.least - between - sum.least;
    const std::int64_t min = wish.min - between - sum.min;
    const std::int64_t max = std::max(wish.max, wish.pixels) - between - sum.preferred;
    const bool anyAutomatic = sum.automatic > 0;
    const double fraction = anyAutomatic ? static_cast<double>(wish.fraction) - sum.fraction : 0;
    if (least <= 0 && min <= 0 && max <= 0 && fraction < kLeastFraction) return false;
    std::vector<int> weights;
    weights.reserve(columns.size());
    for (const FlowColumn& column : columns) {
        weights.push_back(anyAutomatic && !isAutomatic(column) ? 0 : column.max + 1);
    }
    const auto weight = [&](std::size_t i) { return weights[i]; };
    const auto count = columns.size();
    if (min > 0) deal(count, min, weight, [&](std::size_t i, int part) { columns[i].min += part; });
    if (least > 0) {
        // In proportion to what would stay above it.
        deal(
            count, least, [&](std::size_t i) { return columns[i].min - columns[i].least; },
            [&](std::size_t i, int part) { columns[i].least += part; });
    }
    if (max > 0) deal(count, max, weight, [&](std::size_t i, int part) { columns[i].max += part; });
    if (fraction < kLeastFraction) return true;
    double all = 0;
    for (const int one : weights) all += one;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i].fraction += static_cast<float>(fraction * weights[i] / all);
    }
    return true;
}

void widenBySpanningCells(Flow& flow, const FlowTable& table, Columns columns) {
    struct Span {
        std::uint32_t count;
        std::uint32_t first;
        FlowColumn wish;
        bool operator<(const Span& other) const {
            return std::pair(count, first) < std::pair(other.count, other.first);
        }
    };
    std::vector<Span> spans;
    forEachCell(flow, table, [&](const FlowCell& cell) {
        if (cell.span > 1) spans.push_back({cell.span, cell.column, wishOf(cell, table)});
    });
    if (spans.empty()) return;
    std::sort(spans.begin(), spans.end());
    ColumnSums sums(columns);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const auto& [count, first, wish] = spans[i];
        if (i + 1 < spans.size() && !(spans[i] < spans[i + 1])) {
            merge(spans[i + 1].wish, wish);
        } else if (widen(columns.subspan(first, count), sums.of(first, count), wish, table.spacing)) {
            sums.add(columns);
        }
    }
}

/// Drops fractions beyond the whole. Of a column that asks for both, the pixels count.
void tidyWishes(Columns columns) {
    float left = 1;
    for (FlowColumn& column : columns) {
        if (column.pixels > 0) column.fraction = 0;
        column.fraction = std::min(column.fraction, left);
        left -= column.fraction;
    }
}

/// The least width at which every column has what its content wants and its fraction of the whole.
int preferredWidth(Columns columns) {
    double all = 0;
    double others = 0;
    double left = 1;
    for (const FlowColumn& column : columns) {
        const double wanted = preferred(column);
        if (column.fraction > 0) {
            all = std::max(all, wanted / static_cast<double>(column.fraction));
            left -= static_cast<double>(column.fraction);
        } else {
            others += wanted;
        }
    }
    if (others > 0) all = std::max(all, others / std::max(left, 0.001));
    return static_cast<int>(std::min(std::ceil(all), double{kMostPixels}));
}

/// The wishes, in the order in which they are met as a table gets wider.
enum Step { kLeast, kMinimum, kFractions, kPixels, kContent, kSteps };

int widthAt(int step, const FlowColumn& column, int total) {
    if (step == kLeast) return column.least;
    if (step >= kFractions && column.fraction > 0) {
        return std::max(column.min, static_cast<int>(static_cast<float>(total) * column.fraction));
    }
    if (step >= kPixels && column.pixels > 0) return preferred(column);
    return step == kContent && isAutomatic(column) ? preferred(column) : column.min;
}

int shareOfRest(const FlowColumn& column, bool anyAutomatic, bool anyPixels) {
    if (anyAutomatic) return isAutomatic(column) ? column.max + 1 : 0;
    if (anyPixels) return column.pixels;
    return static_cast<int>(column.fraction * 10000) + 1;
}

}  // namespace

void measureColumns(Flow& flow, FlowTable& table) {
    if (table.rowCount == 0) return;
    numberColumns(flow, table);
    const Columns columns = Columns(flow.columns).subspan(table.firstColumn, table.columnCount);
    forEachCell(flow, table, [&](const FlowCell& cell) {
        if (cell.span == 1) merge(columns[cell.column], wishOf(cell, table));
    });
    widenBySpanningCells(flow, table, columns);
    tidyWishes(columns);
    table.least = table.min = table.outside();
    for (const FlowColumn& column : columns) {
        table.least += column.least;
        table.min += column.min;
    }
    table.max = std::max(table.min, preferredWidth(columns) + table.outside());
    table.least = std::max(table.least, table.width.pixels);
    if (table.width.pixels > 0) table.min = table.max = std::max(table.min, table.width.pixels);
}

int tableWidth(const FlowTable& table, int available) {
    const int min = std::clamp(available, table.least, table.min);
    if (table.width.fraction > 0) {
        const double wanted = static_cast<double>(table.width.fraction) * available;
        return std::max(min, static_cast<int>(wanted));
    }
    return std::clamp(available, min, table.max);
}

void setColumnWidths(std::span<const FlowColumn> columns, int total, std::span<int> widths) {
    std::int64_t before = 0;
    for (int step = kLeast; step < kSteps; ++step) {
        std::int64_t sum = 0;
        for (const FlowColumn& column : columns) sum += widthAt(step, column, total);
        if (step > kLeast && sum >= total) {
            for (std::size_t i = 0; i < columns.size(); ++i) widths[i] = widthAt(step - 1, columns[i], total);
            deal(
                columns.size(), std::max<std::int64_t>(total - before, 0),
                [&](std::size_t i) {
                    return widthAt(step, columns[i], total) - widthAt(step - 1, columns[i], total);
                },
                [&](std::size_t i, int part) { widths[i] += part; });
            return;
        }
        before = sum;
    }
    bool anyAutomatic = false;
    bool anyPixels = false;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        widths[i] = widthAt(kContent, columns[i], total);
        anyAutomatic = anyAutomatic || isAutomatic(columns[i]);
        anyPixels = anyPixels || columns[i].pixels > 0;
    }
    deal(
        columns.size(), total - before,
        [&](std::size_t i) { return shareOfRest(columns[i], anyAutomatic, anyPixels); },
        [&](std::size_t i, int part) { widths[i] += part; });
}

}  // namespace kavrelon
