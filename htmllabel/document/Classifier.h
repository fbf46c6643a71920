#pragma once

#include <memory_resource>
#include <string_view>

#include "htmllabel/document/Attributes.h"
#include "htmllabel/document/DocumentDefaults.h"
#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/document/PageValues.h"

namespace kavrelon {

/// Fills the records of a document's elements: what their tags mean, or their words.
class Classifier {
  public:
    /// `texts` holds the words. All three outlive this object.
    Classifier(const DocumentDefaults& defaults, PageValues& page, std::pmr::memory_resource& texts)
        : defaults_(defaults), page_(page), texts_(texts), attributes_(defaults, page, texts) {}

    /// Fills a record that knows its source, code and index. Raises a RuntimeError for what it cannot read,
    /// with everything before it stored.
    void mClassifyElement(HTMLElement& element);

  private:
    void setDefaults(HTMLElement& element);
    void setWords(HTMLElement& element);

    const DocumentDefaults& defaults_;
    PageValues& page_;
    std::pmr::memory_resource& texts_;
    Attributes attributes_;
};

}  // namespace kavrelon
