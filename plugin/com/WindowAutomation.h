#pragma once

#include <windows.h>

#include <oleauto.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "kavrelon.h"
#include "plugin/clsTerminal.h"
#include "support/com/AutomationValue.h"
#include "support/com/ComCall.h"
#include "support/com/DualInterface.h"

namespace kavrelon {

inline long toAutomation(WindowId window) {
    return static_cast<long>(window);
}
/// In local time; 0 for the clock's epoch, which stands for never.
DATE toAutomation(std::chrono::system_clock::time_point time);

/// A property of the window or of its screen: its name, what reads and what writes it, and which values it
/// can keep.
template <class Owner, class Value, class Given = Value>
struct WindowProperty {
    const char* name;
    Value (Owner::*read)() const;
    void (Owner::*write)(Given) = nullptr;
    bool (*canKeep)(Given) = nullptr;
};

/// ITerminalWindow: the current window's members for hosts and scripts. Each acts on the window that is
/// current when it is called, and raises ObjectNotSet when there is none. A window that the user has closed
/// ignores what it is told, and reads as 0, False or empty.
class WindowAutomation : public DualInterface<::ITerminalWindow> {
  public:
    STDMETHODIMP ProcessCmd(BSTR sCmd, VARIANT* bProcessed) override;
    STDMETHODIMP ShowTitleBar(VARIANT_BOOL bState) override;
    STDMETHODIMP Redrawscreen(VARIANT_BOOL PaintOnly) override;
    STDMETHODIMP ResetScreenDefaults() override;
    STDMETHODIMP Copy() override;
    STDMETHODIMP Paste() override;

    STDMETHODIMP get_PasteOk(VARIANT_BOOL* Value) override { return get(kPasteOk, Value); }
    STDMETHODIMP put_PasteOk(VARIANT_BOOL Value) override { return put(kPasteOk, Value); }
    STDMETHODIMP get_CutOk(VARIANT_BOOL* Value) override { return get(kCutOk, Value); }
    STDMETHODIMP put_CutOk(VARIANT_BOOL Value) override { return put(kCutOk, Value); }
    STDMETHODIMP get_CRtoCRLF(VARIANT_BOOL* Value) override { return get(kCRtoCRLF, Value); }
    STDMETHODIMP put_CRtoCRLF(VARIANT_BOOL Value) override { return put(kCRtoCRLF, Value); }
    STDMETHODIMP get_InputOn(VARIANT_BOOL* Value) override { return get(kInputOn, Value); }
    STDMETHODIMP put_InputOn(VARIANT_BOOL Value) override { return put(kInputOn, Value); }
    STDMETHODIMP get_PaintOn(VARIANT_BOOL* Value) override { return get(kPaintOn, Value); }
    STDMETHODIMP put_PaintOn(VARIANT_BOOL Value) override { return put(kPaintOn, Value); }
    STDMETHODIMP get_AutoSize(VARIANT_BOOL* Value) override { return get(kAutoSize, Value); }
    STDMETHODIMP put_AutoSize(VARIANT_BOOL Value) override { return put(kAutoSize, Value); }
    STDMETHODIMP get_AutoWrap(VARIANT_BOOL* Value) override { return get(kAutoWrap, Value); }
    STDMETHODIMP put_AutoWrap(VARIANT_BOOL Value) override { return put(kAutoWrap, Value); }
    STDMETHODIMP get_UseMemoryDC(VARIANT_BOOL* Value) override { return get(kUseMemoryDC, Value); }
    STDMETHODIMP put_UseMemoryDC(VARIANT_BOOL Value) override { return put(kUseMemoryDC, Value); }
    STDMETHODIMP get_ScreenFontSize(short* Value) override { return get(kScreenFontSize, Value); }
    STDMETHODIMP put_ScreenFontSize(short Value) override { return put(kScreenFontSize, Value); }
    STDMETHODIMP get_CursorX(short* Value) override { return get(kCursorX, Value); }
    STDMETHODIMP put_CursorX(short Value) override { return put(kCursorX, Value); }
    STDMETHODIMP get_CursorY(short* Value) override { return get(kCursorY, Value); }
    STDMETHODIMP put_CursorY(short Value) override { return put(kCursorY, Value); }
    STDMETHODIMP get_CharsPerLine(short* Value) override { return get(kCharsPerLine, Value); }
    STDMETHODIMP get_LinesPerPage(short* Value) override { return get(kLinesPerPage, Value); }
    STDMETHODIMP get_CloseDate(DATE* Value) override { return get(kCloseDate, Value); }
    STDMETHODIMP get_SessionOpen(VARIANT_BOOL* Value) override { return get(kSessionOpen, Value); }
    STDMETHODIMP get_SessionClosed(VARIANT_BOOL* Value) override { return get(kSessionClosed, Value); }
    STDMETHODIMP get_ConnectionProfile(BSTR* Value) override { return get(kConnectionProfile, Value); }
    STDMETHODIMP get_IniFile(BSTR* Value) override { return get(kIniFile, Value); }
    STDMETHODIMP get_hWnd(long* Value) override { return get(kWindow, Value); }
    STDMETHODIMP get_SelectionText(BSTR* Value) override;
    STDMETHODIMP ScreenText(VARIANT FirstRow, VARIANT LastRow, BSTR* Value) override;
    STDMETHODIMP CellAttributes(long Column, long Row, VARIANT* Value) override;
    STDMETHODIMP get_Caption(BSTR* Value) override { return get(kCaption, Value); }
    STDMETHODIMP put_Caption(BSTR Value) override { return put(kCaption, Value); }
    STDMETHODIMP get_PasteBytes(VARIANT_BOOL* Value) override { return get(kPasteBytes, Value); }
    STDMETHODIMP put_PasteBytes(VARIANT_BOOL Value) override { return put(kPasteBytes, Value); }

  protected:
    virtual clsTerminal& terminal() = 0;

  private:
    using Flag = WindowProperty<frmTerm, bool>;
    using ScreenFlag = WindowProperty<Screen, bool>;
    using ScreenNumber = WindowProperty<Screen, std::int16_t>;

    static frmTerm& owner(frmTerm& window, const frmTerm*) { return window; }
    static Screen& owner(frmTerm& window, const Screen*) { return window.screen(); }

    /// Runs the work of a member on the current window; this object and the window are held meanwhile.
    template <class Work>
    HRESULT call(const char* member, Work&& work) {
        const ComPtr<IUnknown> self(static_cast<::ITerminalWindow*>(this));
        return comCall({"kavrelon.clsTerminal", member, __uuidof(::ITerminalWindow)}, [&] {
            const std::shared_ptr<frmTerm> window = terminal().currentWindow();
            work(*window);
        });
    }
    /// A result that a failing member leaves must not lead anywhere.
    template <class Automation>
    static void empty(Automation* value) {
        if (value != nullptr) *value = Automation{};
    }
    template <class Owner, class Value, class Given, class Automation>
    HRESULT get(const WindowProperty<Owner, Value, Given>& property, Automation* value) {
        empty(value);
        return call(property.name, [&](frmTerm& window) {
            Automation& place = out(value);
            if (!window.isLoaded()) return;
            place = toAutomation((owner(window, static_cast<Owner*>(nullptr)).*property.read)());
        });
    }
    template <class Owner, class Value, class Given, class Automation>
    HRESULT put(const WindowProperty<Owner, Value, Given>& property, Automation value) {
        return call(property.name, [&](frmTerm& window) {
            if (!window.isLoaded()) return;
            const auto given = fromAutomation<Given>(value);
            if (property.canKeep != nullptr && !property.canKeep(given))
                raise(RuntimeErrorNumber::InvalidPropertyValue);
            (owner(window, static_cast<Owner*>(nullptr)).*property.write)(given);
        });
    }

    static constexpr bool isFontSize(std::int16_t points) { return points >= 1 && points <= 1638; }

    using W = frmTerm;
    using S = Screen;
    static constexpr Flag kPasteOk{"PasteOk", &W::PasteOk, &W::PasteOk};
    static constexpr Flag kCutOk{"CutOk", &W::CutOk, &W::CutOk};
    static constexpr Flag kCRtoCRLF{"CRtoCRLF", &W::CRtoCRLF, &W::CRtoCRLF};
    static constexpr Flag kInputOn{"InputOn", &W::InputOn, &W::InputOn};
    static constexpr ScreenFlag kPaintOn{"PaintOn", &S::PaintOn, &S::PaintOn};
    static constexpr ScreenFlag kAutoSize{"AutoSize", &S::AutoSize, &S::AutoSize};
    static constexpr ScreenFlag kAutoWrap{"AutoWrap", &S::AutoWrap, &S::AutoWrap};
    static constexpr ScreenFlag kUseMemoryDC{"UseMemoryDC", &S::UseMemoryDC, &S::UseMemoryDC};
    static constexpr ScreenNumber kScreenFontSize{"ScreenFontSize", &S::ScreenFontSize, &S::ScreenFontSize,
                                                  isFontSize};
    static constexpr WindowProperty<S, std::int16_t, int> kCursorX{"CursorX", &S::CursorX, &S::CursorX};
    static constexpr WindowProperty<S, std::int16_t, int> kCursorY{"CursorY", &S::CursorY, &S::CursorY};
    static constexpr ScreenNumber kCharsPerLine{"CharsPerLine", &S::CharsPerLine};
    static constexpr ScreenNumber kLinesPerPage{"LinesPerPage", &S::LinesPerPage};
    static constexpr WindowProperty<W, std::chrono::system_clock::time_point> kCloseDate{"CloseDate",
                                                                                         &W::CloseDate};
    static constexpr Flag kPasteBytes{"PasteBytes", &W::PasteBytes, &W::PasteBytes};
    static constexpr Flag kSessionOpen{"SessionOpen", &W::sessionOpen};
    static constexpr Flag kSessionClosed{"SessionClosed", &W::sessionClosed};
    static constexpr WindowProperty<W, const std::string&> kConnectionProfile{"ConnectionProfile",
                                                                              &W::ConnectionProfile};
    static constexpr WindowProperty<W, const std::string&> kIniFile{"IniFile", &W::IniFile};
    static constexpr WindowProperty<W, WindowId> kWindow{"hWnd", &W::hWnd};
    static constexpr WindowProperty<W, std::string, const std::string&> kCaption{"Caption", &W::Caption,
                                                                                 &W::Caption};
};

}  // namespace kavrelon
