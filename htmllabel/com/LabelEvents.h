#pragma once

#include <windows.h>

#include <ocidl.h>

#include <memory>
#include <string>

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/com/LabelSite.h"
#include "support/com/ConnectionPoint.h"
#include "support/com/LateCall.h"

namespace kavrelon {

/// Passes the label's events to the container's sinks, unless the container is in design mode or has frozen
/// the events.
class LabelEvents final : public HTMLLabelEvents {
  public:
    LabelEvents(IConnectionPointContainer& object, const LabelSite& site);

    /// Where sinks register: for the events, and for changes of properties.
    ConnectionPoint& events() noexcept { return events_; }
    ConnectionPoint& propertyNotices() noexcept { return propertyNotices_; }

    /// Each `freeze` needs its `thaw`; events are fired again after the last one.
    void freeze() noexcept { ++freezes_; }
    void thaw() noexcept { freezes_ -= freezes_ > 0 ? 1 : 0; }

    /// False when a sink objects to a change of this property.
    bool mayChange(DISPID property) const;
    void changed(DISPID property) const;

    void HyperlinkClick(const std::string& Href) noexcept override;
    std::shared_ptr<const Picture> LoadImage(const std::string& Source) noexcept override;
    void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept override;
    void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept override;
    void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) noexcept override;

  private:
    template <class... Values>
    void fire(DISPID event, const Values&... values) noexcept;

    IConnectionPointContainer& object_;
    const LabelSite& site_;
    ConnectionPoint events_;
    ConnectionPoint propertyNotices_;
    int freezes_ = 0;
};

}  // namespace kavrelon
