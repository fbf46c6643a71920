#include "htmllabel/com/LabelConnections.h"

#include <olectl.h>

#include "kavrelon.h"

namespace kavrelon {

STDMETHODIMP LabelConnections::EnumConnectionPoints(IEnumConnectionPoints** enumerator) {
    return enumerate({&parts().events.events(), &parts().events.propertyNotices()}, enumerator);
}

STDMETHODIMP LabelConnections::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    if (point == nullptr) return E_POINTER;
    *point = nullptr;
    for (ConnectionPoint* const each : {&parts().events.events(), &parts().events.propertyNotices()}) {
        if (each->iid() == iid)
            return each->QueryInterface(IID_IConnectionPoint, reinterpret_cast<void**>(point));
    }
    return CONNECT_E_NOCONNECTION;
}

STDMETHODIMP LabelConnections::GetClassInfo(ITypeInfo** info) {
    return classInfo_.give(CLSID_HTMLLabel, info);
}

STDMETHODIMP LabelConnections::GetGUID(DWORD kind, GUID* guid) {
    if (guid == nullptr) return E_POINTER;
    *guid = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? DIID_DHTMLLabelEvents : GUID_NULL;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

}  // namespace kavrelon
