#pragma once

#include "htmllabel/com/LabelAutomation.h"
#include "htmllabel/com/LabelConnections.h"
#include "htmllabel/com/LabelInPlaceObject.h"
#include "htmllabel/com/LabelOleObject.h"
#include "htmllabel/com/LabelPersistence.h"
#include "htmllabel/com/LabelViewObject.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// The HTML label as a control for containers: each base is one group of its interfaces, and all work on the
/// same parts.
///
/// Not marked as safe for untrusted callers: its documents come from remote systems, and their links can call
/// into the form that the control is on.
class LabelObject final : public Implements<LabelAutomation, LabelOleObject, LabelInPlaceObject,
                                            LabelViewObject, LabelPersistence, LabelConnections> {
  public:
    using LabelFace::kClassName;

  private:
    ~LabelObject() override = default;
    LabelParts& parts() noexcept override { return parts_; }

    LabelParts parts_{*this, *this};
};

}  // namespace kavrelon
