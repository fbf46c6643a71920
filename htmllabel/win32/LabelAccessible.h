#pragma once

#include <windows.h>

#include <oleacc.h>

#include <memory>
#include <utility>

#include "support/com/Implements.h"

namespace kavrelon {

class HTMLLabel;

/// A label as screen readers and other accessibility tools see it: a document whose name is its title and
/// whose value is its text, with its links as children, which are numbered from 1 in document order.
///
/// Its window makes it, holds one reference and disconnects it at the end; tools may hold it longer.
class LabelAccessible final : public Implements<Extending<IAccessible, IDispatch>> {
  public:
    LabelAccessible(std::weak_ptr<HTMLLabel> label, HWND viewPort)
        : label_(std::move(label)), viewPort_(viewPort) {}

    /// From now on every call fails with CO_E_OBJNOTCONNECTED.
    void disconnect() noexcept {
        label_.reset();
        viewPort_ = nullptr;
    }

    /// The number of the link that has the keyboard's frame, CHILDID_SELF without one.
    static LONG childInFocus(const HTMLLabel& label);

    STDMETHODIMP get_accParent(IDispatch** parent) override;
    STDMETHODIMP get_accChildCount(LONG* count) override;
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
    STDMETHODIMP get_accFocus(VARIANT* child) override;
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
    STDMETHODIMP accDoDefaultAction(VARIANT child) override;
    STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
    STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override;
    STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;

    // What a label does not have.
    STDMETHODIMP get_accDescription(VARIANT, BSTR* text) override { return nothing(text); }
    STDMETHODIMP get_accHelp(VARIANT, BSTR* text) override { return nothing(text); }
    STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT, LONG* topic) override;
    STDMETHODIMP get_accKeyboardShortcut(VARIANT, BSTR* text) override { return nothing(text); }
    STDMETHODIMP get_accSelection(VARIANT* children) override;
    STDMETHODIMP accNavigate(LONG, VARIANT, VARIANT* end) override;
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

    // Nobody calls these members by name.
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

  private:
    struct Subject;

    ~LabelAccessible() override = default;
    static HRESULT nothing(BSTR* text);
    /// Runs a member's work for the label itself or one of its links.
    template <class Work>
    HRESULT answer(const char* member, const VARIANT& child, Work&& work) noexcept;

    std::weak_ptr<HTMLLabel> label_;
    HWND viewPort_;
};

}  // namespace kavrelon
