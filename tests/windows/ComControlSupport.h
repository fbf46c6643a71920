#pragma once

#include "samplehost/com/DispatchObject.h"
#include "samplehost/com/HostedControl.h"
#include "support/com/Variant.h"
#include "tests/windows/ComTestSupport.h"
#include "tests/windows/ProcessUsage.h"
#include "tests/windows/WindowImage.h"

namespace kavrelon {

inline std::string textOf(VARIANT& value) {
    Variant text;
    VariantChangeTypeEx(&text, &value, LOCALE_INVARIANT, 0, VT_BSTR);
    return toAnsi(bstrView(text.bstrVal));
}

/// A container's saved properties, as texts "Name=value ", and its log of bad ones.
class TextBag final : public Implements<IPropertyBag, IErrorLog> {
  public:
    explicit TextBag(std::string saved) : saved_(' ' + std::move(saved)) {}

    std::string written;
    std::string complaints;

    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
        const std::size_t start = saved_.find(' ' + toAnsi(name) + '=');
        if (start == std::string::npos) return E_INVALIDARG;
        const std::size_t text = saved_.find('=', start) + 1;
        V_BSTR(value) = toBstr(saved_.substr(text, saved_.find(' ', text) - text)).detach();
        V_VT(value) = VT_BSTR;
        return S_OK;
    }
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
        written += toAnsi(name) + '=' + textOf(*value) + ' ';
        return S_OK;
    }
    STDMETHODIMP AddError(LPCOLESTR name, EXCEPINFO*) override {
        complaints += toAnsi(name) + ' ';
        return S_OK;
    }

  private:
    const std::string saved_;
};

/// A form with a label on it.
class ComControl : public ComCopy {
  protected:
    ~ComControl() override {
        close();
        DestroyWindow(form);
    }

    template <class Interface = ::IHTMLLabel>
    ComPtr<Interface> create() const {
        return library->create<Interface>(CLSID_HTMLLabel);
    }
    /// Puts a label on the form. `members` are those of the form's object.
    void open(std::vector<std::wstring> members = {L"WindowState", L"Show"}) {
        close();
        const auto object = [this](const char* who, std::vector<std::wstring> names) {
            using namespace std::placeholders;
            return make<DispatchObject>(std::bind(&ComControl::note, this, who, _1, _2), std::move(names));
        };
        control.emplace(create<IUnknown>(), form, object("form", std::move(members)).get());
        label = control->query<::IHTMLLabel>();
        control->connect(*object("event", {}));
        label->put_EnableAnchors(VARIANT_TRUE);
        label->put_EnableScroll(VARIANT_TRUE);
        control->show({0, 0, 300, 200});
        heard.clear();
    }
    void close() {
        label = {};
        control.reset();
    }
    void setDocument(const char* text) { EXPECT_EQ(label->put_DocumentHTML(toBstr(text).get()), S_OK); }

    static HWND viewPort(HWND outer) {
        return FindWindowExA(outer, nullptr, "kavrelon.picViewPort", nullptr);
    }
    HWND viewPort() const { return viewPort(control->window()); }
    static WindowImage imageOf(HWND window) {
        UpdateWindow(window);
        return WindowImage(window);
    }
    static void click(HWND window, Point at) {
        for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
            SendMessageA(window, message, 0, MAKELPARAM(at.x, at.y));
        }
    }
    /// Runs the form's message loop for a time.
    void pump(DWORD milliseconds) {
        const DWORD start = GetTickCount();
        do {
            MSG message{};
            while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
                if (!control || !control->translate(message)) DispatchMessageA(&message);
            }
        } while (GetTickCount() - start < milliseconds);
    }
    void press(WPARAM key) {
        PostMessageA(viewPort(), WM_KEYDOWN, key, 0);
        pump(0);
    }
    std::string taken() { return std::exchange(heard, {}); }

    const HWND form = CreateWindowA("STATIC", "", WS_POPUP | WS_VISIBLE, 20, 20, 500, 400, nullptr, nullptr,
                                    nullptr, nullptr);
    std::optional<HostedControl> control;
    ComPtr<::IHTMLLabel> label;
    std::string heard;
    std::function<void(DISPID)> onEvent = [](DISPID) {};

  private:
    HRESULT note(const char* who, DISPID id, DISPPARAMS& arguments) {
        heard += std::string(who) + ' ' + std::to_string(id);
        for (UINT i = arguments.cArgs; i-- > 0;) {
            heard += ' ' + textOf(arguments.rgvarg[i]);
        }
        heard += "; ";
        onEvent(id);
        return S_OK;
    }
};

}  // namespace kavrelon
