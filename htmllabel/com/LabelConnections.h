#pragma once

#include <windows.h>

#include <ocidl.h>

#include "htmllabel/com/LabelParts.h"
#include "support/com/Implements.h"
#include "support/com/TypeInfo.h"

namespace kavrelon {

/// How sinks find the label's events.
class LabelConnections : public IConnectionPointContainer,
                         public IProvideClassInfo2,
                         protected virtual LabelFace {
  public:
    using Faces = FaceList<Face<IConnectionPointContainer>, Face<IProvideClassInfo2, IProvideClassInfo>>;

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** enumerator) override;
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;

  private:
    TypeInfo classInfo_;
};

}  // namespace kavrelon
