#pragma once

#include <windows.h>

#include <ocidl.h>

#include "htmllabel/com/LabelParts.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// The label for containers that draw it themselves: form designers and programs that print.
class LabelViewObject : public IViewObjectEx, protected virtual LabelFace {
  public:
    using Faces = FaceList<Face<IViewObjectEx, IViewObject2, IViewObject>>;

    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device, HDC information,
                      HDC target, LPCRECTL bounds, LPCRECTL metafileWindow,
                      BOOL(STDMETHODCALLTYPE* goesOn)(ULONG_PTR), ULONG_PTR context) override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                             HDC information, LOGPALETTE** colors) override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) override;
    STDMETHODIMP Unfreeze(DWORD freeze) override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;
    STDMETHODIMP GetRect(DWORD aspect, LPRECTL place) override;
    STDMETHODIMP GetViewStatus(DWORD* status) override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG closeness,
                               DWORD* result) override;
    STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT place, LONG closeness,
                              DWORD* result) override;
    STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC information,
                                  DVEXTENTINFO* extent, LPSIZEL size) override;
};

}  // namespace kavrelon
