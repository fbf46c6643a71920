// The class as a host uses it, created by its registration.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ocidl.h>

#include "headless/EscapeRows.h"
#include "terminal/win32/WindowClass.h"
#include "tests/windows/ComTestSupport.h"

namespace kavrelon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ComSession : public ComPlugIn {};

TEST_F(ComSession, IsOneObjectBehindAllInterfaces) {
    const auto identity = main.query<IUnknown>();
    ComPtr<IDispatch> face;
    EXPECT_EQ(main->get_ClientReceive(face.put()), S_OK);
    EXPECT_EQ(face.get(), static_cast<IDispatch*>(receiver.get()));
    EXPECT_EQ(face.query<IUnknown>().get(), identity.get());
    EXPECT_EQ(main->get_ClientEscTree(face.put()), S_OK);
    EXPECT_EQ(face.get(), static_cast<IDispatch*>(table.get()));
    EXPECT_EQ(face.query<IDispatch>().get(), static_cast<IDispatch*>(main.get()));
    EXPECT_EQ(callBack.query<IClientMain>().get(), main.get());

    ComPtr<ITypeInfo> classInfo;
    Bstr name;
    EXPECT_EQ(main.query<IProvideClassInfo>()->GetClassInfo(classInfo.put()), S_OK);
    EXPECT_EQ(classInfo->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(name.view(), L"clsTerminal");

    VARIANT_BOOL canDisable = VARIANT_TRUE;
    EXPECT_EQ(main->get_CanEnableDisable(&canDisable), S_OK);
    EXPECT_EQ(canDisable, VARIANT_FALSE);

    void* none = this;
    EXPECT_EQ(main->QueryInterface(IID_IClassFactory, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
}

TEST_F(ComSession, ReportsErrorsByNumberAndText) {
    start();
    Bstr text;
    for (const HRESULT outside :
         {table->get_EscTreeString(101, text.put()), table->get_EscTreeDesc(-1, text.put()),
          callBack->FuncKey(49, text.put())}) {
        EXPECT_EQ(outside, runtimeError(9));
    }
    EXPECT_EQ(process(*table, rows::kCursorPosition, {L"one", L"1"}), runtimeError(13));
    EXPECT_EQ(takeErrorInfo(), "Type mismatch (IClientEscTree_EscTreeProcess) <kavrelon.clsTerminal>");
    EXPECT_EQ(main.query<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(__uuidof(IClientEscTree)), S_OK);

    EXPECT_EQ(process(*table, 101, {}), runtimeError(9));
    short count = 0;
    EXPECT_EQ(table->get_EscTreeCount(&count), S_OK);
    EXPECT_EQ(takeErrorInfo(), "none") << "a success leaves the error of the call before";
    EXPECT_EQ(table->get_EscTreeCount(nullptr), E_POINTER);
}

TEST_F(ComSession, RunsFromCreationToDestructionWithEitherKindOfParent) {
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> members;
    ComPtr<IUnknown> scripted;
    ASSERT_EQ(LoadTypeLibEx((libraryPath() + L"\\2").c_str(), REGKIND_NONE, library.put()), S_OK);
    ASSERT_EQ(library->GetTypeInfoOfGuid(__uuidof(IClientParent), members.put()), S_OK);
    ASSERT_EQ(CreateStdDispatch(nullptr, parent.get(), members.get(), scripted.put()), S_OK);
    for (const auto& given : {ComPtr<IDispatch>(parent.get()), scripted.query<IDispatch>()}) {
        parent->calls.clear();
        parent->failing = false;
        EXPECT_EQ(main->SetClientParent(given.get()), S_OK);
        for (const HRESULT result :
             {main->InitializeClass(), main->OnConnection(), receiver->ReceiveStart(),
              receiver->ReceiveData('A'), receiver->ReceiveData('\x1B'),
              process(*table, rows::kCursorPosition, {L"10", L"20"}), receiver->ReceiveEnd(), main->OnLogin(),
              main->OnLogOut(), callBack->SendTermData(toBstr("caf\xE9").get()), callBack->SendBreak(),
              callBack->WindowHasClosed()}) {
            EXPECT_EQ(result, S_OK);
        }
        EXPECT_THAT(parent->calls,
                    ElementsAre("profile?", "ini?", "command INIT", "data caf\xE9", "break", "closed"));
        parent->failing = true;
        EXPECT_EQ(callBack->SendBreak(), RecordingParent::kFailure);
        EXPECT_THAT(takeErrorInfo(), HasSubstr("the line is down"));
        EXPECT_EQ(main->OnLogin(), S_OK) << "a logon carries on";
        EXPECT_EQ(callBack->WindowHasClosed(), S_OK);
        EXPECT_EQ(takeErrorInfo(), "none");
        EXPECT_EQ(main->OnClose(), S_OK);
        EXPECT_EQ(main->DestroyClass(), S_OK);
        main->SetClientParent(given.get());
        EXPECT_EQ(main->InitializeClass(), RecordingParent::kFailure);
        EXPECT_EQ(main->DestroyClass(), S_OK);
    }
    EXPECT_EQ(scripted.detach()->Release(), 0U);
    // An object that is no parent at all has none of the members.
    EXPECT_EQ(main->SetClientParent(receiver.get()), S_OK);
    EXPECT_EQ(callBack->SendBreak(), runtimeError(438));
    EXPECT_EQ(
        takeErrorInfo(),
        "Object doesn't support this property or method: ParentSendBreak (SendBreak) <kavrelon.clsTerminal>");
    main->DestroyClass();
}

TEST_F(ComSession, OutlivesItsReleaseFromWithin) {
    start();
    release();
    IClientMain* const last = main.detach();
    parent->onCall = [&] {
        last->SetClientParent(nullptr);
        EXPECT_GT(last->Release(), 0U) << "the member that runs holds no reference";
    };
    EXPECT_EQ(last->OnLogin(), S_OK);
    EXPECT_EQ(parent->references(), 1U);
}

TEST_F(ComSession, TakesArgumentArraysOfEveryShape) {
    start();
    const auto set = [&](SAFEARRAY* array, short row = rows::kSetFunctionKey) {
        long result = 7;
        const HRESULT done = table->EscTreeProcess(row, &array, &result);
        EXPECT_EQ(result, 0);
        if (array != nullptr) SafeArrayDestroy(array);
        return done;
    };
    const auto expectKey = [&](short number, const std::string& expected) {
        Bstr text;
        EXPECT_EQ(callBack->FuncKey(number, text.put()), S_OK);
        EXPECT_EQ(toAnsi(text.view()), expected);
    };
    // The first field has index 1, wherever the array begins.
    EXPECT_EQ(set(stringArray(1, {L"7", L"one"})), S_OK);
    EXPECT_EQ(set(stringArray(-2, {L"", L"", L"", L"9", L"minus two \x2192"})), S_OK);
    expectKey(7, "one");
    expectKey(9, "minus two ?");
    std::vector<std::wstring> many(3000, std::wstring(100, L'x'));
    many[0] = L"10";
    EXPECT_EQ(set(stringArray(1, many)), S_OK);
    expectKey(10, std::string(100, 'x'));

    SAFEARRAY* const variants = SafeArrayCreateVector(VT_VARIANT, 1, 2);
    VARIANT* fields = nullptr;
    SafeArrayAccessData(variants, reinterpret_cast<void**>(&fields));
    fields[0].vt = VT_I2;
    fields[0].iVal = 11;
    fields[1].vt = VT_R8;
    fields[1].dblVal = 2.5;
    SafeArrayUnaccessData(variants);
    EXPECT_EQ(set(variants), S_OK);
    expectKey(11, "2.5");

    SAFEARRAYBOUND square[] = {{2, 1}, {2, 1}};
    // This row takes empty fields, so that only the array itself can be refused.
    EXPECT_EQ(set(SafeArrayCreateVector(VT_BSTR, 1, 2), rows::kSetAttribute), S_OK)
        << "null strings are empty texts";
    for (SAFEARRAY* array : {SafeArrayCreate(VT_BSTR, 2, square), SafeArrayCreateVector(VT_I4, 1, 2)}) {
        EXPECT_EQ(set(array, rows::kSetAttribute), runtimeError(13));
    }
    // One that was never dimensioned has no elements.
    EXPECT_EQ(set(nullptr, rows::kSetAttribute), S_OK);
    EXPECT_EQ(set(nullptr), runtimeError(9));
    for (SAFEARRAY* array : {stringArray(1, {}), stringArray(5, {L"7", L"x"}), stringArray(1, {L"7"}),
                             stringArray(std::numeric_limits<LONG>::min(), {L"7", L"x"})}) {
        EXPECT_EQ(set(array), runtimeError(9));
    }
    expectKey(7, "one");
}

TEST(ComText, CrossesTheBoundaryUnchanged) {
    std::string all;
    for (int code = 0; code < 256; ++code) all += static_cast<char>(code);
    EXPECT_EQ(toAnsi(toBstr(all).view()), all);
    EXPECT_EQ(toAnsi(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(toAnsi(L"\x0416\xFF21"), "??") << "no lookalikes";
    EXPECT_EQ(toAnsi(bstrView(nullptr)), "");
}

/// Hears of this thread's windows before they are created, activated, moved and destroyed, as the code of a
/// host does. What its handler answers with true does not take place.
class WindowHook {
  public:
    explicit WindowHook(std::function<bool(int event, HWND window)> handler) {
        handler_ = std::move(handler);
        hook_ = SetWindowsHookExA(WH_CBT, procedure, nullptr, GetCurrentThreadId());
    }
    ~WindowHook() {
        UnhookWindowsHookEx(hook_);
        handler_ = nullptr;
    }
    WindowHook(const WindowHook&) = delete;
    WindowHook& operator=(const WindowHook&) = delete;

  private:
    static LRESULT CALLBACK procedure(int code, WPARAM window, LPARAM) {
        return code >= 0 && handler_ && handler_(code, reinterpret_cast<HWND>(window)) ? 1 : 0;
    }
    static inline std::function<bool(int, HWND)> handler_;
    HHOOK hook_;
};

HWND terminalWindow() {
    return FindWindowA(WindowClass::kName, nullptr);
}

TEST_F(ComSession, MayEndInTheMiddleOfAnyChangeOfItsWindows) {
    const auto showBox = [&] {
        return process(*table, rows::kShowHelpBox, {L"1", L"0", L"1", L"9", L"3", L"text"});
    };
    const auto sequence = [&](short row) { return [this, row] { return process(*table, row, {}); }; };
    const std::pair<const char*, std::function<HRESULT()>> works[] = {
        {"erase", sequence(rows::kClearScreen)},
        {"push", sequence(rows::kNewScreen)},
        {"pop", sequence(rows::kCloseScreen)},
        {"replace a box", showBox},
        {"connect", [&] { return main->OnConnection(); }},
    };
    int ended = 0;
    for (const auto& [name, work] : works) {
        int events = 1;
        for (int which = 1; which <= events; ++which) {
            SCOPED_TRACE(std::string(name) + ", event " + std::to_string(which));
            start();
            ASSERT_EQ(main->OnConnection(), S_OK);
            ASSERT_EQ(process(*table, rows::kNewScreen, {}), S_OK);
            ASSERT_EQ(showBox(), S_OK);
            events = 0;
            {
                const WindowHook hook([&](int, HWND) {
                    if (++events == which) ended += main->DestroyClass() == S_OK ? 1 : 0;
                    return false;
                });
                work();
            }
            main->DestroyClass();
            EXPECT_EQ(terminalWindow(), nullptr);
            EXPECT_EQ(FindWindowA("kavrelon.frmHelp", nullptr), nullptr);
        }
    }
    EXPECT_GT(ended, 20);
}

TEST_F(ComSession, KeepsItsWindowWhenAScreenCannotBeMade) {
    start();
    ASSERT_EQ(main->OnConnection(), S_OK);
    const HWND base = terminalWindow();
    {
        const WindowHook hook([](int event, HWND) { return event == HCBT_CREATEWND; });
        EXPECT_EQ(process(*table, rows::kNewScreen, {}), E_OUTOFMEMORY);
    }
    EXPECT_EQ(FindWindowExA(nullptr, base, WindowClass::kName, nullptr), nullptr);
    EXPECT_EQ(GetFocus(), base);
    EXPECT_TRUE(KillTimer(base, 1)) << "its cursor does not blink any more";
    EXPECT_EQ(process(*table, rows::kNewScreen, {}), S_OK);
    EXPECT_NE(terminalWindow(), base);
    EXPECT_EQ(process(*table, rows::kCloseScreen, {}), S_OK);
    EXPECT_EQ(terminalWindow(), base);
    EXPECT_EQ(main->DestroyClass(), S_OK);
}

}  // namespace
}  // namespace kavrelon
