#include "samplehost/com/PlugIn.h"

#include <gmock/gmock.h>

#include "samplehost/com/ComFailure.h"
#include "samplehost/com/ParentObject.h"
#include "support/Bytes.h"
#include "support/com/ComText.h"
#include "support/com/DualInterface.h"
#include "support/com/Implements.h"
#include "support/com/LateCall.h"
#include "support/com/Variant.h"

namespace kavrelon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Notes what a plug-in asks of the host.
class NotingRequests final : public ParentRequests {
  public:
    std::string last;

    void ParentSendData(const std::string& text) override { last = "data " + text; }
    void ParentSendBreak() override { last = "break"; }
    void ParentSendCommand(const std::string& command) override { last = "command " + command; }
    void ParentWindowClosed() override { throw std::runtime_error("out of order"); }
    std::string ParentConnectionProfile() override { return "office"; }
    std::string ParentIniFile() override { return "C:\\host.ini"; }
};

/// The calls that a plug-in got, one text for each, and the call that has to fail.
struct Calls {
    std::vector<std::string> made;
    std::string failing;

    HRESULT note(const std::string& call) {
        made.push_back(call);
        return call == failing ? E_FAIL : S_OK;
    }
};

/// A plug-in other than the terminal: it has another table, and only notes its calls.
class OtherPlugIn final : public Implements<DualInterface<IClientMain>, DualInterface<IClientReceive>,
                                            DualInterface<IClientEscTree>> {
  public:
    explicit OtherPlugIn(Calls& calls) : calls_(calls) {}

    STDMETHODIMP SetClientParent(IDispatch* oParent) override {
        return calls_.note(oParent != nullptr ? "parent" : "no parent");
    }
    STDMETHODIMP InitializeClass() override { return calls_.note("initialise"); }
    STDMETHODIMP OnConnection() override { return calls_.note("connection"); }
    STDMETHODIMP OnLogin() override { return calls_.note("login"); }
    STDMETHODIMP OnLogOut() override { return calls_.note("logout"); }
    STDMETHODIMP OnClose() override { return calls_.note("close"); }
    STDMETHODIMP DestroyClass() override { return calls_.note("destroy"); }
    STDMETHODIMP get_ClientReceive(IDispatch** Value) override { return give<IClientReceive>(Value); }
    STDMETHODIMP get_ClientEscTree(IDispatch** Value) override { return give<IClientEscTree>(Value); }
    STDMETHODIMP get_PlugInID(BSTR* Value) override { return give("OTHER", Value); }
    STDMETHODIMP get_PlugInDesc(BSTR* Value) override { return give("Another plug-in", Value); }
    STDMETHODIMP get_PlugInVersion(BSTR* Value) override { return give("2.3.4", Value); }
    STDMETHODIMP get_Enabled(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP put_Enabled(VARIANT_BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP get_CanEnableDisable(VARIANT_BOOL*) override { return E_NOTIMPL; }
    STDMETHODIMP CheckTimer() override { return E_NOTIMPL; }
    STDMETHODIMP OnCommandAccepted() override { return E_NOTIMPL; }
    STDMETHODIMP OnCommandHold() override { return E_NOTIMPL; }

    STDMETHODIMP ReceiveStart() override { return calls_.note("["); }
    STDMETHODIMP ReceiveData(unsigned char Ch) override { return calls_.note({static_cast<char>(Ch)}); }
    STDMETHODIMP ReceiveEnd() override { return calls_.note("]"); }

    STDMETHODIMP get_EscTreeCount(short* Value) override {
        *Value = 3;
        return calls_.note("count");
    }
    STDMETHODIMP get_EscTreeString(short Index, BSTR* Value) override {
        return give(
            std::array{"", "<ESC><7>SAY {X}<term>", "<27><7>{N},{N}<term>", "<30>ring"}.at(row(Index)),
            Value);
    }
    STDMETHODIMP get_EscTreeDesc(short Index, BSTR* Value) override {
        return give(std::array{"", "Shout", "Size Screen", "NewScreen"}.at(row(Index)), Value);
    }
    STDMETHODIMP get_EscTreeCreateFlag(short, long*) override { return E_NOTIMPL; }
    STDMETHODIMP EscTreeProcess(short Index, SAFEARRAY** Args, long* Result) override {
        std::string call = std::to_string(Index) + ':';
        LONG last = 0;
        SafeArrayGetUBound(*Args, 1, &last);
        for (LONG field = 1; field <= last; ++field) {
            Bstr text;
            SafeArrayGetElement(*Args, &field, text.put());
            call += ' ' + toAnsi(text.view());
        }
        *Result = 0;
        return calls_.note(call);
    }

  private:
    static std::size_t row(short index) { return static_cast<std::size_t>(index); }
    template <class Interface>
    HRESULT give(IDispatch** value) {
        *value = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    static HRESULT give(const char* text, BSTR* value) {
        *value = toBstr(text).detach();
        return S_OK;
    }

    Calls& calls_;
};

class PlugInHostTest : public testing::Test, protected PlugInObserver {
  protected:
    std::unique_ptr<PlugIn> host() {
        ComPtr<IClientMain> main;
        *main.put() = new OtherPlugIn(calls);
        return std::make_unique<PlugIn>(main, ParentObject::create(requests),
                                        static_cast<PlugInObserver&>(*this));
    }
    std::unique_ptr<PlugIn> openHost() {
        auto plugIn = host();
        plugIn->open();
        calls.made.clear();
        return plugIn;
    }
    static void receive(PlugIn& plugIn, std::string_view text) {
        plugIn.receive([&text] { return bytesOf(std::exchange(text, {})); });
    }

    NotingRequests requests;
    Calls calls;
    std::vector<std::string> observed;

  private:
    void unmatched(std::span<const std::uint8_t> bytes) override {
        observed.push_back("unmatched " + std::to_string(bytes.size()));
    }
    void failed(const std::string& what) override { observed.push_back(what); }
    void screenSized(int columns, int rows) override {
        observed.push_back(std::to_string(columns) + " x " + std::to_string(rows));
    }
    void screenCovered() override { calls.made.emplace_back("covered"); }
};

TEST_F(PlugInHostTest, CallsInTheAgreedOrder) {
    auto plugIn = host();
    EXPECT_EQ(plugIn->identity(), "OTHER, Another plug-in, version 2.3.4");
    plugIn->open();
    plugIn.reset();
    EXPECT_THAT(calls.made, ElementsAre("parent", "initialise", "count", "connection", "login", "logout",
                                        "close", "destroy"));
}

TEST_F(PlugInHostTest, DestroysWhatItCouldNotOpen) {
    for (const char* step : {"parent", "initialise", "count", "connection"}) {
        SCOPED_TRACE(step);
        calls = {{}, step};
        EXPECT_THROW(host()->open(), ComFailure);
        EXPECT_EQ(calls.made.back(), "destroy");
    }
}

TEST_F(PlugInHostTest, FollowsTheTableOfAnyPlugIn) {
    const auto plugIn = openHost();
    receive(*plugIn, "a\x1B\aSAY he");
    receive(*plugIn, "llo\rb\x1ER\x1Ering");
    receive(*plugIn, "\x1B\a90,30\r\x1B[5mc");
    EXPECT_THAT(calls.made, ElementsAre("[", "a", "]", "[", "1: hello", "b", "\x1E", "R", "covered",
                                        "3:", "]", "[", "2: 90 30", "c", "]"));
    EXPECT_THAT(observed, ElementsAre("90 x 30", "unmatched 4"));
    calls.made.clear();
    EXPECT_TRUE(plugIn->sizeScreen(132, 43));
    EXPECT_THAT(calls.made, ElementsAre("2: 132 43"));
    calls.made.clear();
    receive(*plugIn, "\x1B\aSAY half");
    plugIn->interrupt();
    receive(*plugIn, "e\r");
    EXPECT_THAT(calls.made, ElementsAre("[", "]", "[", "e", "\r", "]"))
        << "what follows an interruption is taken for part of a sequence";
    calls.made.clear();
    receive(*plugIn, "\x1B\aSAY gr\x81\xE1\xFE\r");
    plugIn->takeTextsAsShown();
    receive(*plugIn, "\x1B\aSAY gr\x81\xE1\xFE\r");
    EXPECT_THAT(calls.made, ElementsAre("[", "1: gr\x81\xE1\xFE", "]", "[", "1: gr\xFC\xDF\xFE", "]"));
}

TEST_F(PlugInHostTest, FailuresAreToldAndTheStreamGoesOn) {
    const auto plugIn = openHost();
    calls.failing = "2: 1 2";
    receive(*plugIn, "\x1B\a1,2\rx");
    calls.failing = "y";
    receive(*plugIn, "yyz");
    plugIn->processCommand("PASTEOK 0");
    EXPECT_THAT(calls.made, ElementsAre("[", "2: 1 2", "x", "]", "[", "y", "y", "z", "]"));
    EXPECT_THAT(observed, ElementsAre(HasSubstr("Row 2, Size Screen, failed: "),
                                      HasSubstr("ReceiveData failed: "), HasSubstr("ProcessCmd failed: ")))
        << "a plug-in without text commands";
}

TEST(SampleHostParentTest, ServesEarlyAndLateBoundPlugIns) {
    NotingRequests requests;
    const ComPtr<ParentObject> parent = ParentObject::create(requests);
    EXPECT_EQ(parent->ParentSendData(toBstr("\x1A\xE9").get()), S_OK);
    EXPECT_EQ(requests.last, "data \x1A\xE9");
    const auto late = parent.query<IDispatch>();
    ASSERT_TRUE(late);
    callByName(*late, L"ParentSendCommand", DISPATCH_METHOD, Arguments("INIT"));
    EXPECT_EQ(requests.last, "command INIT");
    Variant profile;
    callByName(*late, L"ParentConnectionProfile", DISPATCH_PROPERTYGET, {}, &profile);
    ASSERT_EQ(profile.vt, VT_BSTR);
    EXPECT_EQ(toAnsi(bstrView(profile.bstrVal)), "office");

    EXPECT_EQ(parent->ParentWindowClosed(), E_FAIL) << "an exception has reached the plug-in";
    EXPECT_EQ(parent->get_ParentIniFile(nullptr), E_POINTER);
    parent->detach();
    EXPECT_TRUE(FAILED(parent->ParentSendBreak()));
    EXPECT_EQ(requests.last, "command INIT");
}

}  // namespace
}  // namespace kavrelon
