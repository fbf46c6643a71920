#pragma once

#include <cstdint>

#include "htmllabel/document/TagType.h"

namespace kavrelon {

/// What a tag does in the layout. Tags of one role differ by their records only.
enum class TagRole : std::uint8_t {
    None,
    Style,
    EndStyle,
    Heading,
    EndHeading,
    Paragraph,
    EndParagraph,
    Quote,
    EndQuote,
    Lines,  // of its own, without space around them
    EndLines,
    List,
    EndList,
    Break,
    // From here on roles also work between the cells of a table. The ones above would change cells that they
    // are not in.
    Item,
    Rule,
    Anchor,
    Picture,
    Table,
    EndTable,
    Row,
    EndRow,
    Cell,
    EndCell,
};

constexpr bool worksBetweenCells(TagRole role) {
    return role >= TagRole::Item;
}

constexpr TagRole roleOf(TagType code) {
    switch (code) {
        case TAG_TEXT:
        case TAG_UNKNOWN:
        case TAG_HEAD:
        case TAG_END_HEAD:
        case TAG_TITLE:
        case TAG_END_TITLE:
        case TAG_BODY:
        case TAG_END_BODY:
        case TAG_COMMENT:
        case TAG_COMMENT_END:
        case TAG_SCRIPT:
        case TAG_END_SCRIPT:
        case TAG_STYLE:
        case TAG_END_STYLE:
            return TagRole::None;
        case TAG_B:
        case TAG_I:
        case TAG_U:
        case TAG_FONT:
        case TAG_BIG:
        case TAG_SMALL:
        case TAG_SUB:
        case TAG_SUP:
            return TagRole::Style;
        case TAG_END_B:
        case TAG_END_I:
        case TAG_END_U:
        case TAG_END_FONT:
        case TAG_END_A:
        case TAG_END_BIG:
        case TAG_END_SMALL:
        case TAG_END_SUB:
        case TAG_END_SUP:
            return TagRole::EndStyle;
        case TAG_HEADING:
            return TagRole::Heading;
        case TAG_END_HEADING:
            return TagRole::EndHeading;
        case TAG_P:
        case TAG_DIV:
            return TagRole::Paragraph;
        case TAG_END_P:
        case TAG_END_DIV:
            return TagRole::EndParagraph;
        case TAG_BLOCKQUOTE:
            return TagRole::Quote;
        case TAG_END_BLOCKQUOTE:
            return TagRole::EndQuote;
        case TAG_CENTER:
        case TAG_FORM:
            return TagRole::Lines;
        case TAG_END_CENTER:
        case TAG_END_FORM:
            return TagRole::EndLines;
        case TAG_UL:
        case TAG_OL:
            return TagRole::List;
        case TAG_END_UL:
        case TAG_END_OL:
            return TagRole::EndList;
        case TAG_LI:
            return TagRole::Item;
        case TAG_HR:
            return TagRole::Rule;
        case TAG_BR:
            return TagRole::Break;
        case TAG_A:
            return TagRole::Anchor;
        case TAG_IMG:
            return TagRole::Picture;
        case TAG_TABLE:
            return TagRole::Table;
        case TAG_END_TABLE:
            return TagRole::EndTable;
        case TAG_TR:
            return TagRole::Row;
        case TAG_END_TR:
        case TAG_THEAD:
        case TAG_END_THEAD:
        case TAG_TBODY:
        case TAG_END_TBODY:
        case TAG_TFOOT:
        case TAG_END_TFOOT:
            return TagRole::EndRow;
        case TAG_TD:
            return TagRole::Cell;
        case TAG_END_TD:
            return TagRole::EndCell;
    }
    return TagRole::None;
}

}  // namespace kavrelon
