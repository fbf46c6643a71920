#pragma once

#include <windows.h>

#include <ocidl.h>

#include "htmllabel/com/LabelParts.h"
#include "support/com/Implements.h"

namespace kavrelon {

/// The label's saved properties, in the three forms in which containers keep them.
class LabelPersistence : public IPersistStreamInit,
                         public IPersistStorage,
                         public IPersistPropertyBag,
                         protected virtual LabelFace {
  public:
    using Faces =
        FaceList<Face<IPersistStreamInit, IPersist>, Face<IPersistStorage>, Face<IPersistPropertyBag>>;

    // IPersist, for all
    STDMETHODIMP GetClassID(CLSID* clsid) override;
    // For a stream and a storage
    STDMETHODIMP IsDirty() override;
    // For a stream and a property bag
    STDMETHODIMP InitNew() override;

    // IPersistStreamInit
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;

    // IPersistStorage
    STDMETHODIMP InitNew(IStorage* storage) override;
    STDMETHODIMP Load(IStorage* storage) override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
    STDMETHODIMP SaveCompleted(IStorage* storage) override;
    STDMETHODIMP HandsOffStorage() override;

    // IPersistPropertyBag
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

  private:
    void initialise();
    void take(const HTMLLabelProperties& properties);
    void writeTo(IStream& stream);

    bool loaded_ = false;
};

}  // namespace kavrelon
