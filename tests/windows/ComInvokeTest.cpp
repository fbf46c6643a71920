// Late-bound calls with whatever a caller can put into a variant.

#include <gtest/gtest.h>

#include <array>
#include <deque>

#include "support/com/Variant.h"
#include "tests/windows/ComControlSupport.h"

namespace kavrelon {
namespace {

VARIANT valueOf(VARTYPE type, void* reference = nullptr) {
    VARIANT value{};
    value.vt = type;
    value.byref = reference;
    return value;
}

/// References that lead nowhere or round in a circle, of every type there is.
std::deque<VARIANT> deadReferences() {
    std::deque<VARIANT> values;
    const auto add = [&](VARIANT value) {
        values.push_back(value);
        values.push_back(valueOf(VT_BYREF | VT_VARIANT, &values.back()));
    };
    for (const int type :
         {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 16, 17, 18, 19, 20, 21, 22, 23, 36}) {
        add(valueOf(static_cast<VARTYPE>(VT_BYREF | type)));
        add(valueOf(static_cast<VARTYPE>(VT_BYREF | VT_ARRAY | type)));
    }
    add(valueOf(VT_BYREF | VT_VARIANT));
    values.back().pvarVal = &values.back();
    return values;
}

/// Calls every member that the object's type information names with a value as its first argument, and
/// expects each to refuse it.
void expectRefusal(IDispatch& object, const VARIANT& value) {
    ComPtr<ITypeInfo> members;
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(object.GetTypeInfo(0, LOCALE_NEUTRAL, members.put()), S_OK);
    members->GetTypeAttr(&attributes);
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
        FUNCDESC* function = nullptr;
        members->GetFuncDesc(i, &function);
        UINT count = 0;
        for (SHORT place = 0; place < function->cParams; ++place) {
            const USHORT flags = function->lprgelemdescParam[place].paramdesc.wParamFlags;
            count += (flags & PARAMFLAG_FRETVAL) == 0 ? 1 : 0;
        }
        DISPID put = DISPID_PROPERTYPUT;
        std::array<VARIANT, 2> lastFirst{VARIANT{}, value};
        DISPPARAMS given{lastFirst.data() + 2 - count, &put, count,
                         function->invkind == INVOKE_PROPERTYPUT ? 1U : 0};
        Variant result;
        if (count > 0) {
            EXPECT_TRUE(
                FAILED(object.Invoke(function->memid, IID_NULL, 0, static_cast<WORD>(function->invkind),
                                     &given, &result, nullptr, nullptr)))
                << "member " << function->memid << ", type " << value.vt;
        }
        members->ReleaseFuncDesc(function);
    }
    members->ReleaseTypeAttr(attributes);
}

/// A bag in which every entry is the same value.
class MonotonousBag final : public Implements<IPropertyBag> {
  public:
    explicit MonotonousBag(const VARIANT& entry) : entry_(entry) {}

    STDMETHODIMP Read(LPCOLESTR, VARIANT* value, IErrorLog*) override {
        *value = entry_;
        return S_OK;
    }
    STDMETHODIMP Write(LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }

  private:
    const VARIANT& entry_;
};

class ComInvoke : public ComPlugIn {
  protected:
    void SetUp() override {
        ComPlugIn::SetUp();
        start();
    }

    /// Carries out a row as a script does, and gives the number of the error that the script sees.
    int process(short row, const VARIANT& array, UINT arguments = 2) {
        VARIANT lastFirst[] = {array, valueOf(VT_I2)};
        lastFirst[1].iVal = row;
        DISPPARAMS given{lastFirst + 2 - arguments, nullptr, arguments, 0};
        return process(given);
    }
    int process(DISPPARAMS& given) {
        EXCEPINFO exception{};
        const HRESULT result =
            table->Invoke(5, IID_NULL, 0, DISPATCH_METHOD, &given, nullptr, &exception, nullptr);
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        return result == DISP_E_EXCEPTION ? exception.scode & 0xFFFF : result;
    }

    const LoadedLibrary library;
    ComPtr<::IHTMLLabel> label = library.create<::IHTMLLabel>(CLSID_HTMLLabel);
};

TEST_F(ComInvoke, RefusesReferencesThatLeadNowhere) {
    IDispatch* const objects[] = {main.get(), table.get(), receiver.get(), callBack.get(), label.get()};
    for (const VARIANT& value : deadReferences()) {
        for (IDispatch* const object : objects) expectRefusal(*object, value);
    }
    DISPPARAMS nothingThere{nullptr, nullptr, 2, 1};
    for (IDispatch* const object : objects) {
        EXPECT_EQ(object->Invoke(5, IID_NULL, 0, DISPATCH_METHOD, &nothingThere, nullptr, nullptr, nullptr),
                  E_INVALIDARG);
    }
}

// The host's objects answer with variants as well.
TEST_F(ComInvoke, TakesNoAnswerThatLeadsNowhere) {
    const RECTL page{0, 0, 100, 100};
    const HDC target = CreateCompatibleDC(nullptr);
    ComPtr<IConnectionPoint> events;
    label.query<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(DHTMLLabelEvents), events.put());
    for (VARIANT& value : deadReferences()) {
        const auto answering = make<DispatchObject>(
            [&](DISPID, DISPPARAMS& arguments, VARIANT* result) {
                *(result != nullptr ? result : arguments.rgvarg[0].pvarVal) = value;
                return S_OK;
            },
            std::vector<std::wstring>{L"ParentConnectionProfile"});
        main->SetClientParent(answering.get());
        EXPECT_TRUE(FAILED(main->InitializeClass()));

        const auto bag = make<MonotonousBag>(value);
        EXPECT_EQ(label.query<IPersistPropertyBag>()->Load(bag.get(), nullptr), S_OK);
        Bstr font;
        label->get_DefaultFontName(font.put());
        EXPECT_EQ(font.view(), L"MS Sans Serif");

        DWORD cookie = 0;
        events->Advise(static_cast<IDispatch*>(answering.get()), &cookie);
        label->put_DocumentHTML(Bstr(L"<IMG SRC=a>").get());
        EXPECT_EQ(label.query<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, target,
                                                   &page, nullptr, nullptr, 0),
                  S_OK);
        events->Unadvise(cookie);
    }
    DeleteDC(target);
}

TEST_F(ComInvoke, TakesNoArrayForOneWithoutElements) {
    VARIANT empty = valueOf(VT_EMPTY);
    VARIANT null = valueOf(VT_NULL);
    VARIANT leftOut = valueOf(VT_ERROR);
    leftOut.scode = DISP_E_PARAMNOTFOUND;
    SAFEARRAY* undimensioned = nullptr;
    VARIANT byReference = valueOf(VT_ARRAY | VT_BYREF | VT_VARIANT, &undimensioned);
    SAFEARRAYBOUND square[] = {{2, 1}, {2, 1}};
    SAFEARRAY* const erased = SafeArrayCreate(VT_BSTR, 1, square);
    SafeArrayDestroyData(erased);
    const VARIANT none[] = {empty,
                            null,
                            leftOut,
                            byReference,
                            valueOf(VT_ARRAY | VT_BSTR),
                            valueOf(VT_ARRAY | VT_BSTR, erased),
                            valueOf(VT_ARRAY | VT_BYREF | VT_BSTR),
                            valueOf(VT_VARIANT | VT_BYREF),
                            valueOf(VT_VARIANT | VT_BYREF, &empty),
                            valueOf(VT_VARIANT | VT_BYREF, &null),
                            valueOf(VT_VARIANT | VT_BYREF, &byReference),
                            valueOf(VT_DISPATCH)};
    const auto expect = [&](int home, int setAttribute, int cursorPosition, const VARIANT& value,
                            UINT arguments) {
        SCOPED_TRACE(value.vt);
        EXPECT_EQ(process(1, value, arguments), home);
        EXPECT_EQ(process(30, value, arguments), setAttribute);
        EXPECT_EQ(process(2, value, arguments), cursorPosition);
        EXPECT_EQ(process(101, value, arguments), 9) << "the row comes first";
    };
    for (const VARIANT& value : none) expect(0, 0, 9, value, 2);
    expect(0, 0, 9, empty, 1);
    SafeArrayDestroy(erased);

    SAFEARRAY* const wrong[] = {SafeArrayCreate(VT_BSTR, 2, square), SafeArrayCreateVector(VT_I4, 1, 2),
                                SafeArrayCreateVector(VT_VARIANT, 1, 1)};
    VARIANT* element = nullptr;
    SafeArrayAccessData(wrong[2], reinterpret_cast<void**>(&element));
    *element = valueOf(VT_BYREF | VT_BSTR);
    SafeArrayUnaccessData(wrong[2]);
    for (SAFEARRAY* const array : wrong) {
        expect(13, 13, 13, valueOf(VT_ARRAY | (array == wrong[1] ? VT_I4 : VT_BSTR), array), 2);
        SafeArrayDestroy(array);
    }
    expect(13, 13, 13, valueOf(VT_BSTR), 2);
    expect(13, 13, 13, valueOf(VT_DISPATCH, label.get()), 2);
}

TEST_F(ComInvoke, TakesArgumentsByTheirNames) {
    SAFEARRAY* const fields = stringArray(1, {L"7", L"one"});
    VARIANT arguments[] = {valueOf(VT_I2), valueOf(VT_ARRAY | VT_BSTR, fields)};
    arguments[0].iVal = 38;
    DISPID names[] = {0, 1};
    DISPPARAMS given{arguments, names, 2, 2};
    EXPECT_EQ(process(given), 0);
    Bstr key;
    callBack->FuncKey(7, key.put());
    EXPECT_EQ(key.view(), L"one");
    SafeArrayDestroy(fields);
    given = {arguments, names + 1, 1, 1};
    EXPECT_EQ(process(given), DISP_E_PARAMNOTOPTIONAL);
}

// Bytes take a shorter way than other calls; it must not lead anywhere else.
TEST_F(ComInvoke, ReceivesBytesAsTheTypeLibrarySays) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(receiver->GetTypeInfo(0, LOCALE_NEUTRAL, info.put()), S_OK);
    const auto outcome = [&](bool described, DISPPARAMS given) {
        window->put_CursorX(0);
        receiver->ReceiveData(' ');
        window->put_CursorX(0);
        EXCEPINFO exception{};
        UINT badArgument = 99;
        const HRESULT called = described ? DispInvoke(receiver.get(), info.get(), 2, DISPATCH_METHOD, &given,
                                                      nullptr, &exception, &badArgument)
                                         : receiver->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &given, nullptr,
                                                            &exception, &badArgument);
        const Bstr texts[] = {Bstr(bstrView(exception.bstrSource)),
                              Bstr(bstrView(exception.bstrDescription))};
        SysFreeString(exception.bstrSource);
        SysFreeString(exception.bstrDescription);
        VARIANT row = valueOf(VT_I2);
        row.iVal = 1;
        Bstr shown;
        window->ScreenText(row, row, shown.put());
        return std::to_string(called) + ' ' + std::to_string(exception.scode) + ' ' +
               std::to_string(badArgument) + ' ' + toAnsi(texts[0].view()) + ' ' + toAnsi(texts[1].view()) +
               ' ' + toAnsi(shown.view().substr(0, 1));
    };

    std::deque<VARIANT> values;
    for (const LONG number : {97, 0, 255, 256, -1, 0x10061, -0x8000}) {
        for (const VARTYPE type : {VT_UI1, VT_I1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_INT, VT_BOOL}) {
            values.push_back(valueOf(type));
            values.back().lVal = number;
            values.push_back(valueOf(VT_BYREF | VT_VARIANT, &values.back()));
            values.push_back(valueOf(static_cast<VARTYPE>(VT_BYREF | type), &values[values.size() - 2].lVal));
        }
    }
    const Bstr digits(L"97");
    const Bstr letter(L"a");
    for (const Bstr* text : {&digits, &letter}) values.push_back(valueOf(VT_BSTR, text->get()));
    values.push_back(valueOf(VT_R8)), values.back().dblVal = 97.5;
    for (const bool open : {true, false}) {
        if (!open) main->DestroyClass();
        for (VARIANT& value : values) {
            VARIANT twice[] = {value, value};
            DISPID name = 0;
            for (DISPPARAMS given : {DISPPARAMS{twice, nullptr, 1, 0}, DISPPARAMS{twice, nullptr, 2, 0},
                                     DISPPARAMS{twice, &name, 1, 1}, DISPPARAMS{}}) {
                EXPECT_EQ(outcome(false, given), outcome(true, given))
                    << "type " << value.vt << ", value " << value.lVal << ", " << given.cArgs << " given";
            }
        }
    }
}

}  // namespace
}  // namespace kavrelon
