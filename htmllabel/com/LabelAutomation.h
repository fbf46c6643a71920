#pragma once

#include <windows.h>

#include <olectl.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "htmllabel/com/LabelParts.h"
#include "kavrelon.h"
#include "support/RuntimeError.h"
#include "support/com/AutomationValue.h"
#include "support/com/DualInterface.h"

namespace kavrelon {

/// One of the label's properties: its name, its number in the type library, and the members that read and
/// write it. Values that it cannot keep are refused.
template <class Value, class Given = Value>
struct LabelProperty {
    const char* name;
    DISPID id;
    Value (HTMLLabel::*read)() const;
    void (HTMLLabel::*write)(Given) = nullptr;
    bool (*canKeep)(Given) = nullptr;
};

/// The label's properties for programs and scripts: the table at the end lists them.
class LabelAutomation : public DualInterface<::IHTMLLabel>, protected virtual LabelFace {
  public:
    STDMETHODIMP get_Version(BSTR* Value) override;
    STDMETHODIMP get_DefaultFontName(BSTR* Value) override { return get(kDefaultFontName, Value); }
    STDMETHODIMP put_DefaultFontName(BSTR Value) override { return put(kDefaultFontName, Value); }
    STDMETHODIMP get_DefaultFontSize(float* Value) override { return get(kDefaultFontSize, Value); }
    STDMETHODIMP put_DefaultFontSize(float Value) override { return put(kDefaultFontSize, Value); }
    STDMETHODIMP get_BackColor(OLE_COLOR* Value) override { return get(kBackColor, Value); }
    STDMETHODIMP put_BackColor(OLE_COLOR Value) override { return put(kBackColor, Value); }
    STDMETHODIMP get_Appearance(short* Value) override { return get(kAppearance, Value); }
    STDMETHODIMP put_Appearance(short Value) override { return put(kAppearance, Value); }
    STDMETHODIMP get_BorderStyle(short* Value) override { return get(kBorderStyle, Value); }
    STDMETHODIMP put_BorderStyle(short Value) override { return put(kBorderStyle, Value); }
    STDMETHODIMP get_EnableTooltips(VARIANT_BOOL* Value) override { return get(kEnableTooltips, Value); }
    STDMETHODIMP put_EnableTooltips(VARIANT_BOOL Value) override { return put(kEnableTooltips, Value); }
    STDMETHODIMP get_DocumentHTML(BSTR* Value) override { return get(kDocumentHTML, Value); }
    STDMETHODIMP put_DocumentHTML(BSTR Value) override;
    STDMETHODIMP get_EnableScroll(VARIANT_BOOL* Value) override { return get(kEnableScroll, Value); }
    STDMETHODIMP put_EnableScroll(VARIANT_BOOL Value) override { return put(kEnableScroll, Value); }
    STDMETHODIMP get_EnableAnchors(VARIANT_BOOL* Value) override { return get(kEnableAnchors, Value); }
    STDMETHODIMP put_EnableAnchors(VARIANT_BOOL Value) override { return put(kEnableAnchors, Value); }
    STDMETHODIMP get_DocumentTitle(BSTR* Value) override { return get(kDocumentTitle, Value); }
    STDMETHODIMP get_UnderlineLinks(VARIANT_BOOL* Value) override { return get(kUnderlineLinks, Value); }
    STDMETHODIMP put_UnderlineLinks(VARIANT_BOOL Value) override { return put(kUnderlineLinks, Value); }
    STDMETHODIMP get_DefaultPadding(short* Value) override { return get(kDefaultPadding, Value); }
    STDMETHODIMP put_DefaultPadding(short Value) override { return put(kDefaultPadding, Value); }
    STDMETHODIMP get_DefaultSpacing(short* Value) override { return get(kDefaultSpacing, Value); }
    STDMETHODIMP put_DefaultSpacing(short Value) override { return put(kDefaultSpacing, Value); }
    STDMETHODIMP get_Text(BSTR* Value) override { return get(kText, Value); }

    // IDispatch
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                        VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override;

  private:
    template <class Value, class Given, class Automation>
    HRESULT get(const LabelProperty<Value, Given>& property, Automation* value) {
        return call<::IHTMLLabel>(this, property.name, [&] {
            Automation& place = out(value);
            place = toAutomation((*parts().label.*property.read)());
        });
    }
    template <class Value, class Given, class Automation>
    HRESULT put(const LabelProperty<Value, Given>& property, Automation value) {
        return call<::IHTMLLabel>(this, property.name, [&] {
            change(property, value);
            parts().changed(property.id);
        });
    }
    /// Writes a property, unless one of the container's sinks objects.
    template <class Value, class Given, class Automation>
    void change(const LabelProperty<Value, Given>& property, Automation value) {
        if (!parts().events.mayChange(property.id)) raise(RuntimeErrorNumber::SetNotPermitted);
        const auto given = fromAutomation<Given>(value);
        if (property.canKeep != nullptr && !property.canKeep(given))
            raise(RuntimeErrorNumber::InvalidPropertyValue);
        (*parts().label.*property.write)(given);
    }

    using L = HTMLLabel;
    using Flag = LabelProperty<bool>;
    using Short = LabelProperty<std::int16_t>;
    using Text = LabelProperty<const std::string&>;
    using Document = LabelProperty<const std::string&, std::string_view>;
    static constexpr Text kDefaultFontName{"DefaultFontName", 2, &L::DefaultFontName, &L::DefaultFontName};
    static constexpr LabelProperty<float> kDefaultFontSize{
        "DefaultFontSize", 3, &L::DefaultFontSize, &L::DefaultFontSize, HTMLLabelProperties::isFontSize};
    static constexpr Flag kEnableTooltips{"EnableTooltips", 4, &L::EnableTooltips, &L::EnableTooltips};
    static constexpr Document kDocumentHTML{"DocumentHTML", 5, &L::DocumentHTML, &L::DocumentHTML};
    static constexpr Flag kEnableScroll{"EnableScroll", 6, &L::EnableScroll, &L::EnableScroll};
    static constexpr Flag kEnableAnchors{"EnableAnchors", 7, &L::EnableAnchors, &L::EnableAnchors};
    static constexpr LabelProperty<std::string> kDocumentTitle{"DocumentTitle", 8, &L::DocumentTitle};
    static constexpr Text kText{"Text", DISPID_TEXT, &L::Text};
    static constexpr Flag kUnderlineLinks{"UnderlineLinks", 9, &L::UnderlineLinks, &L::UnderlineLinks};
    static constexpr Short kDefaultPadding{"DefaultPadding", 10, &L::DefaultPadding, &L::DefaultPadding,
                                           HTMLLabelProperties::isDistance};
    static constexpr Short kDefaultSpacing{"DefaultSpacing", 11, &L::DefaultSpacing, &L::DefaultSpacing,
                                           HTMLLabelProperties::isDistance};
    static constexpr LabelProperty<Colour> kBackColor{"BackColor", DISPID_BACKCOLOR, &L::BackColor,
                                                      &L::BackColor, isColour};
    static constexpr Short kAppearance{"Appearance", DISPID_APPEARANCE, &L::Appearance, &L::Appearance,
                                       HTMLLabelProperties::isChoice};
    static constexpr Short kBorderStyle{"BorderStyle", DISPID_BORDERSTYLE, &L::BorderStyle, &L::BorderStyle,
                                        HTMLLabelProperties::isChoice};
};

}  // namespace kavrelon
