#include "htmllabel/com/LabelPersistence.h"

#include <olectl.h>

#include "htmllabel/com/SavedProperties.h"
#include "kavrelon.h"

namespace kavrelon {
namespace {

constexpr wchar_t kStreamName[] = L"Contents";

template <class Object>
Object& given(Object* object) {
    if (object == nullptr) throw ComError(E_POINTER);
    return *object;
}

}  // namespace

STDMETHODIMP LabelPersistence::GetClassID(CLSID* clsid) {
    if (clsid == nullptr) return E_POINTER;
    *clsid = CLSID_HTMLLabel;
    return S_OK;
}

STDMETHODIMP LabelPersistence::IsDirty() {
    return parts().isDirty ? S_OK : S_FALSE;
}

// A control is created with its initial values, so only the order of calls is checked.
void LabelPersistence::initialise() {
    if (loaded_) throw ComError(CO_E_ALREADYINITIALIZED);
}

void LabelPersistence::take(const HTMLLabelProperties& properties) {
    parts().label->savedProperties(properties);
    loaded_ = true;
    parts().changed(DISPID_UNKNOWN);  // this means: any of them
    parts().isDirty = false;
}

void LabelPersistence::writeTo(IStream& stream) {
    const std::string bytes = encodeProperties(parts().label->savedProperties());
    ULONG written = 0;
    throwIfFailed(stream.Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written));
    if (written != bytes.size()) throw ComError(STG_E_MEDIUMFULL);
}

STDMETHODIMP LabelPersistence::InitNew() {
    return call<IPersistStreamInit>(this, "InitNew", [&] { initialise(); });
}

STDMETHODIMP LabelPersistence::Load(IStream* stream) {
    return call<IPersistStreamInit>(this, "Load", [&] { take(decodeProperties(given(stream))); });
}

STDMETHODIMP LabelPersistence::Save(IStream* stream, BOOL clearDirty) {
    return call<IPersistStreamInit>(this, "Save", [&] {
        writeTo(given(stream));
        if (clearDirty != FALSE) parts().isDirty = false;
    });
}

STDMETHODIMP LabelPersistence::GetSizeMax(ULARGE_INTEGER* size) {
    return call<IPersistStreamInit>(this, "GetSizeMax", [&] {
        out(size).QuadPart = encodeProperties(parts().label->savedProperties()).size();
    });
}

STDMETHODIMP LabelPersistence::InitNew(IStorage* storage) {
    return call<IPersistStorage>(this, "InitNew", [&] {
        given(storage);
        initialise();
    });
}

STDMETHODIMP LabelPersistence::Load(IStorage* storage) {
    return call<IPersistStorage>(this, "Load", [&] {
        ComPtr<IStream> stream;
        throwIfFailed(given(storage).OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0,
                                                stream.put()));
        take(decodeProperties(*stream));
    });
}

STDMETHODIMP LabelPersistence::Save(IStorage* storage, BOOL) {
    return call<IPersistStorage>(this, "Save", [&] {
        ComPtr<IStream> stream;
        throwIfFailed(given(storage).CreateStream(
            kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.put()));
        writeTo(*stream);
    });
}

STDMETHODIMP LabelPersistence::SaveCompleted(IStorage*) {
    parts().isDirty = false;
    return S_OK;
}

// No storage is kept open between calls.
STDMETHODIMP LabelPersistence::HandsOffStorage() {
    return S_OK;
}

STDMETHODIMP LabelPersistence::Load(IPropertyBag* bag, IErrorLog* log) {
    return call<IPersistPropertyBag>(this, "Load", [&] { take(loadProperties(given(bag), log)); });
}

STDMETHODIMP LabelPersistence::Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) {
    return call<IPersistPropertyBag>(this, "Save", [&] {
        saveProperties(parts().label->savedProperties(), given(bag), saveAll != FALSE);
        if (clearDirty != FALSE) parts().isDirty = false;
    });
}

}  // namespace kavrelon
