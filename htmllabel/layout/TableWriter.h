#pragma once

#include <vector>

#include "htmllabel/layout/FlowWriter.h"
#include "htmllabel/layout/InlineStyles.h"

namespace kavrelon {

/// Follows the tables of a document and writes them to its flow. Supplies missing rows and cells, and ignores
/// the tags of rows and cells outside of a table.
class TableWriter {
  public:
    /// `gap` is the space above and below a table.
    TableWriter(Flow& flow, FlowWriter& writer, InlineStyles& styles, int gap)
        : flow_(flow), writer_(writer), styles_(styles), gap_(gap) {}

    /// Not to be called between cells.
    void openTable(const HTMLElement& tag);
    void closeTable();
    void openRow(const HTMLElement& tag);
    void closeRow();
    void openCell(const HTMLElement& tag);
    void closeCell();

    /// The current place is in a table but in none of its cells: content needs a cell first.
    bool awaitsCell() const { return !open_.empty() && open_.back().cell == kNone; }
    /// Opens a cell for content between the cells of a table. Between rows it gets a row of its own and is as
    /// wide as the table.
    void openImpliedCell();
    void closeAll();

  private:
    struct Row {
        Align align = Align::Left;
        Colour background = 0;
        bool hasBackground = false;
        std::int32_t verticalAlign = 0;  // 0: not given
        Extent height;
    };
    struct OpenTable {
        std::uint32_t table = 0;
        std::uint32_t cell = kNone;
        std::uint32_t nextColumn = 0;
        bool inRow = false;
        bool rowHasCells = false;
        Row row;
    };

    void beginRow(const Row& row);
    void beginCell(FlowCell cell);

    Flow& flow_;
    FlowWriter& writer_;
    InlineStyles& styles_;
    int gap_;
    std::vector<OpenTable> open_;
};

}  // namespace kavrelon
