#pragma once

#include <string_view>
#include <vector>

#include "htmllabel/document/Tokenizer.h"

namespace kavrelon {

/// Adds the "</P>", "</TR>" and "</TD>" that are missing, each before the first tag that ends its element.
///
/// Openers and closers of one kind are matched like brackets: rows and cells within their table, paragraphs
/// within their cell. Only openers left without a closer get one, so a document whose tags are complete stays
/// as it is, whatever their order.
void addClosingTags(std::vector<Piece>& pieces, std::string_view document);

/// The source of a closer that was added.
std::string_view addedCloser(TagType code);

}  // namespace kavrelon
