#pragma once

#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "htmllabel/document/DocumentDefaults.h"
#include "htmllabel/document/HTMLElement.h"
#include "htmllabel/document/PageValues.h"

namespace kavrelon {

/// Reads the attributes of tags into their records and into the page's fields.
///
/// Raises a RuntimeError for what it cannot read, with everything before it stored.
class Attributes {
  public:
    /// `texts` holds what had to be decoded. All three outlive this object.
    Attributes(const DocumentDefaults& defaults, PageValues& page, std::pmr::memory_resource& texts)
        : defaults_(defaults), page_(page), texts_(texts) {}

    void mApplyTagAttributes(HTMLElement& element);

  private:
    std::int16_t mintExtractTagAttributes(std::string_view tag);
    void apply(HTMLElement& element, std::string_view name, std::string_view value);
    void setBackColour(HTMLElement& element, std::string_view value);
    void setSize(HTMLElement& element, std::string_view value) const;
    std::string_view decoded(std::string_view value) const;

    const DocumentDefaults& defaults_;
    PageValues& page_;
    std::pmr::memory_resource& texts_;
    // Of the tag being read: entry i of both is its i-th attribute.
    std::vector<std::string_view> mstrAttrNames_;
    std::vector<std::string_view> mstrAttrValues_;
};

}  // namespace kavrelon
