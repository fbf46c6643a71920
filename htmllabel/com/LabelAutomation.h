#pragma once

#include "htmllabel/com/LabelParts.h"
#include "kavrelon.h"
#include "support/com/DualInterface.h"

namespace kavrelon {

/// The label's properties for programs and scripts.
class LabelAutomation : public DualInterface<::IHTMLLabel>, protected virtual LabelFace {
  public:
    STDMETHODIMP get_Version(BSTR* Value) override;
    STDMETHODIMP get_DefaultFontName(BSTR* Value) override;
    STDMETHODIMP put_DefaultFontName(BSTR Value) override;
    STDMETHODIMP get_DefaultFontSize(float* Value) override;
    STDMETHODIMP put_DefaultFontSize(float Value) override;
    STDMETHODIMP get_BackColor(OLE_COLOR* Value) override;
    STDMETHODIMP put_BackColor(OLE_COLOR Value) override;
    STDMETHODIMP get_Appearance(short* Value) override;
    STDMETHODIMP put_Appearance(short Value) override;
    STDMETHODIMP get_BorderStyle(short* Value) override;
    STDMETHODIMP put_BorderStyle(short Value) override;
    STDMETHODIMP get_EnableTooltips(VARIANT_BOOL* Value) override;
    STDMETHODIMP put_EnableTooltips(VARIANT_BOOL Value) override;
    STDMETHODIMP get_DocumentHTML(BSTR* Value) override;
    STDMETHODIMP put_DocumentHTML(BSTR Value) override;
    STDMETHODIMP get_EnableScroll(VARIANT_BOOL* Value) override;
    STDMETHODIMP put_EnableScroll(VARIANT_BOOL Value) override;
    STDMETHODIMP get_EnableAnchors(VARIANT_BOOL* Value) override;
    STDMETHODIMP put_EnableAnchors(VARIANT_BOOL Value) override;
    STDMETHODIMP get_DocumentTitle(BSTR* Value) override;
    STDMETHODIMP get_UnderlineLinks(VARIANT_BOOL* Value) override;
    STDMETHODIMP put_UnderlineLinks(VARIANT_BOOL Value) override;
    STDMETHODIMP get_DefaultPadding(short* Value) override;
    STDMETHODIMP put_DefaultPadding(short Value) override;
    STDMETHODIMP get_DefaultSpacing(short* Value) override;
    STDMETHODIMP put_DefaultSpacing(short Value) override;

    // IDispatch
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  private:
    template <class Value, class Read>
    HRESULT get(const char* property, Value* value, Read&& read);
    template <class Write>
    HRESULT put(const char* property, DISPID id, Write&& write);
};

}  // namespace kavrelon
