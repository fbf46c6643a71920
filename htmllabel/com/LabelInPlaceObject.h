#pragma once

#include <windows.h>

#include <oleidl.h>

#include "htmllabel/com/LabelParts.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// The label in place on a form, as the container moves and deactivates it, and as the form's frame passes
/// it keys.
class LabelInPlaceObject : public IOleInPlaceObject,
                           public IOleInPlaceActiveObject,
                           protected virtual LabelFace {
  public:
    using Faces = FaceList<Face<IOleInPlaceObject, IOleWindow>, Face<IOleInPlaceActiveObject>>;

    // IOleWindow, for both
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;

    // IOleInPlaceObject
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;

    // IOleInPlaceActiveObject
    STDMETHODIMP TranslateAccelerator(LPMSG message) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL active) override;
    STDMETHODIMP OnDocWindowActivate(BOOL active) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL isFrame) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;
};

}  // namespace kavrelon
