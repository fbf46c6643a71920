#include "plugin/com/WindowAutomation.h"

#include <array>
#include <chrono>

#include "support/com/Variant.h"
#include "terminal/win32/OemCharacters.h"

namespace kavrelon {
namespace {

/// A text of the screen in the characters that it shows.
BSTR shownText(const std::string& text) {
    return Bstr(shownCharacters(text)).detach();
}

/// The value that was given, which may be a script's variable; null when it was left out.
VARIANT* given(VARIANT* value) {
    if (value == nullptr) return nullptr;
    if (!isReadable(*value)) raise(RuntimeErrorNumber::TypeMismatch);
    VARIANT* const meant = value->vt == (VT_VARIANT | VT_BYREF) ? value->pvarVal : value;
    return meant->vt == VT_ERROR && meant->scode == DISP_E_PARAMNOTFOUND ? nullptr : meant;
}

/// A row of the screen, `otherwise` when none was given.
long rowOf(VARIANT& value, long otherwise, long rows) {
    const VARIANT* const meant = given(&value);
    if (meant == nullptr) return otherwise;
    Variant number;
    switch (changeType(number, *meant, VT_I4)) {
        case S_OK:
            break;
        case DISP_E_OVERFLOW:
            raise(RuntimeErrorNumber::Overflow);
        default:
            raise(RuntimeErrorNumber::TypeMismatch);
    }
    if (number.lVal < 1 || number.lVal > rows) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    return number.lVal;
}

/// A flag in a caller's variable, in the type that the variable has.
class FlagVariable {
  public:
    explicit FlagVariable(VARIANT* variable) : variable_(given(variable)) {
        if (variable_ == nullptr) return;
        const VARTYPE type = variable_->vt;
        reference_ = type == (VT_BOOL | VT_BYREF) ? variable_->pboolVal : nullptr;
        if (reference_ == nullptr && type != VT_BOOL && type != VT_EMPTY)
            raise(RuntimeErrorNumber::TypeMismatch);
    }
    void set() {
        if (reference_ != nullptr) {
            *reference_ = VARIANT_TRUE;
        } else if (variable_ != nullptr) {
            variable_->vt = VT_BOOL;
            variable_->boolVal = VARIANT_TRUE;
        }
    }

  private:
    VARIANT* variable_;
    VARIANT_BOOL* reference_ = nullptr;
};

}  // namespace

STDMETHODIMP WindowAutomation::ProcessCmd(BSTR sCmd, VARIANT* bProcessed) {
    return call("ProcessCmd", [&](frmTerm& window) {
        if (!window.isLoaded()) return;
        FlagVariable flag(bProcessed);
        bool processed = false;
        window.ProcessCmd(toAnsi(bstrView(sCmd)), processed);
        if (processed) flag.set();
    });
}

STDMETHODIMP WindowAutomation::ShowTitleBar(VARIANT_BOOL bState) {
    return call("ShowTitleBar", [&](frmTerm& window) { window.ShowTitleBar(bState != VARIANT_FALSE); });
}

STDMETHODIMP WindowAutomation::Redrawscreen(VARIANT_BOOL PaintOnly) {
    return call("Redrawscreen", [&](frmTerm& window) { window.Redrawscreen(PaintOnly != VARIANT_FALSE); });
}

STDMETHODIMP WindowAutomation::ResetScreenDefaults() {
    return call("ResetScreenDefaults", [](frmTerm& window) {
        if (window.isLoaded()) window.screen().ResetScreenDefaults();
    });
}

STDMETHODIMP WindowAutomation::Copy() {
    return call("Copy", [](frmTerm& window) { window.mnuRightClickCopy_Click(); });
}

STDMETHODIMP WindowAutomation::Paste() {
    return call("Paste", [](frmTerm& window) { window.mnuRightClickPaste_Click(); });
}

STDMETHODIMP WindowAutomation::get_SelectionText(BSTR* Value) {
    empty(Value);
    return call("SelectionText", [&](frmTerm& window) {
        BSTR& text = out(Value);
        if (window.isLoaded()) text = shownText(window.SelectionText());
    });
}

STDMETHODIMP WindowAutomation::ScreenText(VARIANT FirstRow, VARIANT LastRow, BSTR* Value) {
    empty(Value);
    return call("ScreenText", [&](frmTerm& window) {
        BSTR& place = out(Value);
        if (!window.isLoaded()) return;
        const Screen& screen = window.screen();
        const long rows = screen.shownRows();
        const long first = rowOf(FirstRow, 1, rows);
        const long last = rowOf(LastRow, rows, rows);
        if (first > last) raise(RuntimeErrorNumber::InvalidProcedureCall);
        std::string text = screen.line(static_cast<int>(first));
        for (long row = first + 1; row <= last; ++row) text += "\r\n" + screen.line(static_cast<int>(row));
        place = shownText(text);
    });
}

STDMETHODIMP WindowAutomation::CellAttributes(long Column, long Row, VARIANT* Value) {
    empty(Value);
    return call("CellAttributes", [&](frmTerm& window) {
        VARIANT& place = out(Value);
        if (!window.isLoaded()) return;
        const Screen& screen = window.screen();
        if (Column < 1 || Column > screen.shownColumns() || Row < 1 || Row > screen.shownRows())
            raise(RuntimeErrorNumber::SubscriptOutOfRange);
        const CellAttr attr = screen.buffer().record(static_cast<int>(Row)).Attrs(static_cast<int>(Column));
        const std::array<short, 3> codes{attr.Fore, attr.Back, attr.Mode};

        Variant array;
        array.parray = SafeArrayCreateVector(VT_VARIANT, 0, codes.size());
        if (array.parray == nullptr) throw ComError(E_OUTOFMEMORY);
        array.vt = VT_ARRAY | VT_VARIANT;
        for (LONG i = 0; i < static_cast<LONG>(codes.size()); ++i) {
            Variant code;
            code.vt = VT_I2;
            code.iVal = codes[static_cast<std::size_t>(i)];
            throwIfFailed(SafeArrayPutElement(array.parray, &i, &code));
        }
        place = array;
        array.vt = VT_EMPTY;
    });
}

DATE toAutomation(std::chrono::system_clock::time_point time) {
    if (time == std::chrono::system_clock::time_point{}) return 0;
    // Since 1601 in steps of 100 nanoseconds, as the platform counts. The clock's own, which are finer, do
    // not reach that far.
    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    constexpr std::chrono::seconds kUnixEpoch{11'644'473'600};
    const auto ticks = std::chrono::duration_cast<Ticks>(time.time_since_epoch()) + kUnixEpoch;
    const std::int64_t count = ticks.count();
    const FILETIME universal{static_cast<DWORD>(count & 0xFFFFFFFF), static_cast<DWORD>(count >> 32)};
    SYSTEMTIME utc{};
    SYSTEMTIME local{};
    DATE date = 0;
    FileTimeToSystemTime(&universal, &utc);
    SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local);
    SystemTimeToVariantTime(&local, &date);
    return date;
}

}  // namespace kavrelon
