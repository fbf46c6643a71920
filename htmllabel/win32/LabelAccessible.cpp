#include "htmllabel/win32/LabelAccessible.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "htmllabel/HTMLLabel.h"
#include "support/com/ComCall.h"
#include "support/com/ComPtr.h"
#include "support/com/ComText.h"
#include "support/win32/PlatformGeometry.h"

namespace kavrelon {
namespace {

VARIANT number(LONG value) {
    VARIANT result{};
    result.vt = VT_I4;
    result.lVal = value;
    return result;
}

VARIANT self() {
    return number(CHILDID_SELF);
}

/// A link's name is one line, however many it is shown on.
std::string onOneLine(std::string text) {
    std::erase(text, '\r');
    std::ranges::replace(text, '\n', ' ');
    std::ranges::replace(text, '\t', ' ');
    return text;
}

LONG numberInFocus(const std::vector<HTMLLabel::Link>& links) {
    const auto found = std::ranges::find(links, true, &HTMLLabel::Link::inFocus);
    return found == links.end() ? CHILDID_SELF : static_cast<LONG>(found - links.begin()) + 1;
}

LONG focusState(bool inFocus) {
    return STATE_SYSTEM_FOCUSABLE | (inFocus ? STATE_SYSTEM_FOCUSED : 0);
}

}  // namespace

/// Whom a call is about: a label, its view port, and one of its links or none.
struct LabelAccessible::Subject {
    HTMLLabel& label;
    HWND viewPort;
    std::vector<HTMLLabel::Link> links;
    const HTMLLabel::Link* link = nullptr;

    bool hasKeyboard() const { return GetFocus() == viewPort; }
    RECT viewPortPlace() const {
        RECT place{};
        GetClientRect(viewPort, &place);
        return place;
    }
    bool canSee(const Rect& box) const {
        RECT seen{};
        const RECT place = toPlatform(box);
        const RECT inner = viewPortPlace();
        return IntersectRect(&seen, &place, &inner) != FALSE;
    }
    LONG focused() const { return numberInFocus(links); }
};

template <class Work>
HRESULT LabelAccessible::answer(const char* member, const VARIANT& child, Work&& work) noexcept {
    return comCall({"HTMLLabel", member, IID_IAccessible}, [&]() -> HRESULT {
        const auto label = label_.lock();
        if (label == nullptr) return CO_E_OBJNOTCONNECTED;
        Subject subject{*label, viewPort_, label->links()};
        if (child.vt != VT_I4 || child.lVal < 0 ||
            static_cast<std::size_t>(child.lVal) > subject.links.size())
            return E_INVALIDARG;
        if (child.lVal > 0) subject.link = &subject.links[static_cast<std::size_t>(child.lVal) - 1];
        return std::forward<Work>(work)(subject);
    });
}

LONG LabelAccessible::childInFocus(const HTMLLabel& label) {
    return numberInFocus(label.links());
}

STDMETHODIMP LabelAccessible::get_accParent(IDispatch** parent) {
    return answer("accParent", self(), [&](const Subject& subject) -> HRESULT {
        out(parent) = nullptr;
        ComPtr<IAccessible> window;
        const HRESULT found = AccessibleObjectFromWindow(subject.viewPort, static_cast<DWORD>(OBJID_WINDOW),
                                                         IID_IAccessible, window.putVoid());
        *parent = window.detach();
        return found;
    });
}

STDMETHODIMP LabelAccessible::get_accChildCount(LONG* count) {
    return answer("accChildCount", self(), [&](const Subject& subject) -> HRESULT {
        out(count) = static_cast<LONG>(subject.links.size());
        return S_OK;
    });
}

// Links are parts of this object rather than objects.
STDMETHODIMP LabelAccessible::get_accChild(VARIANT child, IDispatch** object) {
    return answer("accChild", child, [&](const Subject&) -> HRESULT {
        out(object) = nullptr;
        return S_FALSE;
    });
}

STDMETHODIMP LabelAccessible::get_accName(VARIANT child, BSTR* name) {
    return answer("accName", child, [&](const Subject& subject) -> HRESULT {
        out(name) = nullptr;
        const auto text =
            subject.link != nullptr ? onOneLine(subject.link->name) : subject.label.document().title();
        if (!text) return S_FALSE;
        *name = toBstr(*text).detach();
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::get_accValue(VARIANT child, BSTR* value) {
    return answer("accValue", child, [&](const Subject& subject) -> HRESULT {
        out(value) = nullptr;
        *value = toBstr(subject.link != nullptr ? subject.link->href : subject.label.Text()).detach();
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::get_accRole(VARIANT child, VARIANT* role) {
    return answer("accRole", child, [&](const Subject& subject) -> HRESULT {
        out(role) = number(subject.link != nullptr ? ROLE_SYSTEM_LINK : ROLE_SYSTEM_DOCUMENT);
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::get_accState(VARIANT child, VARIANT* state) {
    return answer("accState", child, [&](const Subject& subject) -> HRESULT {
        const bool hasKeyboard = subject.hasKeyboard();
        if (subject.link == nullptr) {
            out(state) =
                number(STATE_SYSTEM_READONLY | focusState(hasKeyboard && subject.focused() == CHILDID_SELF) |
                       (IsWindowVisible(subject.viewPort) ? 0 : STATE_SYSTEM_INVISIBLE));
            return S_OK;
        }
        const Rect& box = subject.link->box;
        LONG flags = STATE_SYSTEM_LINKED;
        if (box == Rect{}) {
            flags |= STATE_SYSTEM_INVISIBLE;
        } else {
            flags |= focusState(hasKeyboard && subject.link->inFocus);
            if (!subject.canSee(box)) flags |= STATE_SYSTEM_OFFSCREEN;
        }
        out(state) = number(flags);
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::get_accFocus(VARIANT* child) {
    return answer("accFocus", self(), [&](const Subject& subject) -> HRESULT {
        out(child) = VARIANT{};
        if (!subject.hasKeyboard()) return S_FALSE;
        *child = number(subject.focused());
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::get_accDefaultAction(VARIANT child, BSTR* action) {
    return answer("accDefaultAction", child, [&](const Subject& subject) -> HRESULT {
        out(action) = nullptr;
        if (subject.link == nullptr) return S_FALSE;
        *action = Bstr(L"Jump").detach();
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::accDoDefaultAction(VARIANT child) {
    return answer("accDoDefaultAction", child, [](const Subject& subject) -> HRESULT {
        if (subject.link == nullptr) return DISP_E_MEMBERNOTFOUND;
        return subject.label.followLink(subject.link->place) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP LabelAccessible::accSelect(LONG flags, VARIANT child) {
    return answer("accSelect", child, [&](const Subject& subject) -> HRESULT {
        if (flags != SELFLAG_TAKEFOCUS) return E_INVALIDARG;
        SetFocus(subject.viewPort);
        if (subject.link == nullptr) return S_OK;
        return subject.label.focusLink(subject.link->place) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP LabelAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) {
    return answer("accLocation", child, [&](const Subject& subject) -> HRESULT {
        out(left) = out(top) = out(width) = out(height) = 0;
        RECT place = subject.link != nullptr ? toPlatform(subject.link->box) : subject.viewPortPlace();
        MapWindowPoints(subject.viewPort, nullptr, reinterpret_cast<POINT*>(&place), 2);
        *left = place.left;
        *top = place.top;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::accHitTest(LONG left, LONG top, VARIANT* child) {
    return answer("accHitTest", self(), [&](const Subject& subject) -> HRESULT {
        out(child) = VARIANT{};
        POINT point{left, top};
        ScreenToClient(subject.viewPort, &point);
        const RECT inner = subject.viewPortPlace();
        if (!PtInRect(&inner, point)) return S_FALSE;
        const auto hit = std::ranges::find_if(subject.links, [&](const HTMLLabel::Link& link) {
            const RECT place = toPlatform(link.box);
            return PtInRect(&place, point) != FALSE;
        });
        *child =
            hit == subject.links.end() ? self() : number(static_cast<LONG>(hit - subject.links.begin()) + 1);
        return S_OK;
    });
}

STDMETHODIMP LabelAccessible::get_accHelpTopic(BSTR* file, VARIANT, LONG* topic) {
    if (topic == nullptr) return E_POINTER;
    *topic = 0;
    return nothing(file);
}

STDMETHODIMP LabelAccessible::get_accSelection(VARIANT* children) {
    if (children == nullptr) return E_POINTER;
    *children = {};
    return S_FALSE;
}

STDMETHODIMP LabelAccessible::accNavigate(LONG, VARIANT, VARIANT* end) {
    return get_accSelection(end);
}

STDMETHODIMP LabelAccessible::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

STDMETHODIMP LabelAccessible::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return E_NOTIMPL;
}

HRESULT LabelAccessible::nothing(BSTR* text) {
    if (text == nullptr) return E_POINTER;
    *text = nullptr;
    return S_FALSE;
}

}  // namespace kavrelon
