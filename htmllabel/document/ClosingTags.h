#pragma once

#include <string_view>
#include <vector>

#include "htmllabel/document/Tokenizer.h"

namespace kavrelon {

/// Adds the "</P>", "</TR>" and "</TD>" that are missing, each before the first tag that ends its element.
///
/// Openers and closers of one kind are matched like brackets, within a table or what stands outside of
/// tables, and paragraphs within a cell. Only openers that stay without a closer get one, so that a document
/// whose tags are complete is left alone, in whatever order they stand.
void addClosingTags(std::vector<Piece>& pieces, std::string_view document);

/// The source of a closer that was added.
std::string_view addedCloser(TagType code);

}  // namespace kavrelon
