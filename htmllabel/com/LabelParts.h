#pragma once

#include <windows.h>

#include <oleidl.h>

#include <memory>
#include <utility>

#include "htmllabel/HTMLLabel.h"
#include "htmllabel/com/LabelActivation.h"
#include "htmllabel/com/LabelEvents.h"
#include "htmllabel/com/LabelSite.h"
#include "htmllabel/com/LabelView.h"
#include "support/com/ComCall.h"

namespace kavrelon {

/// The parts that all interfaces of one control work on.
struct LabelParts {
    LabelParts(IConnectionPointContainer& object, IOleInPlaceActiveObject& activeObject)
        : events(object, site), activation(activeObject, site, events, label) {}

    /// Marks a property as changed, and tells the sinks.
    void changed(DISPID property) {
        isDirty = true;
        events.changed(property);
        view.changed();
    }

    std::shared_ptr<HTMLLabel> label = std::make_shared<HTMLLabel>();
    LabelSite site;
    LabelEvents events;
    LabelActivation activation;
    LabelView view;
    ComPtr<IOleAdviseHolder> adviseHolder;
    /// The control's size in HIMETRIC.
    SIZEL extent = toHimetric({200, 120});
    bool isDirty = false;
};

/// A group of the control's interfaces: a base of the object, which supplies the parts.
class LabelFace {
  public:
    static constexpr const char* kClassName = "kavrelon.HTMLLabel";
    /// Recomposes on resize, cannot be linked inside, is active whenever visible, knows its site first.
    static constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE |
                                         OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE |
                                         OLEMISC_SETCLIENTSITEFIRST;
    static_assert(kMiscStatus == 131473);

  protected:
    ~LabelFace() = default;
    virtual LabelParts& parts() noexcept = 0;

    /// Runs the work of a member of `Interface`, and keeps the object alive: the container may release it
    /// while it is called.
    template <class Interface, class Object, class Work>
    static HRESULT call(Object* object, const char* member, Work&& work) {
        const ComPtr<IUnknown> self(static_cast<Interface*>(object));
        return comCall({kClassName, member, __uuidof(Interface)}, std::forward<Work>(work));
    }
};

}  // namespace kavrelon
