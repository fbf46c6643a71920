// The library while memory runs out: every allocation of a step fails once.

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "headless/EscapeRows.h"
#include "samplehost/com/ComFailure.h"
#include "tests/windows/ComControlSupport.h"
#include "tests/windows/FailingAllocations.h"

namespace kavrelon {
namespace {

/// Everything that a host does with a terminal and a label.
class ComMemory : public ComControl {
  protected:
    /// Makes a call again and again, each time with another allocation that fails, until none does: it does
    /// or says what it always does, or that there is no memory. `after` is called without failures each time.
    void each(
        const std::string& name, const std::function<HRESULT()>& call,
        const std::function<void()>& after = [] {}) {
        constexpr std::size_t kMost = 2000;
        // Twice, as the second call may meet what the first has left: a box that it replaces.
        HRESULT usual = S_OK;
        for (int round = 0; round < 2; ++round) {
            usual = call();
            after();
        }
        bool failed = failing_;
        for (std::size_t n = 1; failed && n < kMost; ++n) {
            FailingAllocations::failNth(n);
            const HRESULT result = call();
            failed = FailingAllocations::stop();
            SetErrorInfo(0, nullptr);
            after();
            const bool refused = failed && (result == E_OUTOFMEMORY || result == runtimeError(7));
            EXPECT_TRUE(result == usual || refused)
                << name << ", allocation " << n << ": " << std::hex << result;
            if (failed) ++(refused ? refused_ : borne_);
        }
        EXPECT_FALSE(failed) << name << " never comes to an end";
    }

    void useTerminal();
    void useLabel();

    ComPtr<RecordingParent> parent_ = make<RecordingParent>();
    Bstr text_;
    bool failing_ = false;
    int borne_ = 0;
    int refused_ = 0;
};

void ComMemory::useTerminal() {
    each("create", [&] {
        const auto factory = library->classObject();
        ComPtr<IUnknown> object;
        return factory ? factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid()) : E_OUTOFMEMORY;
    });
    const auto main = library->create<IClientMain>();
    const auto receive = main.query<IClientReceive>();
    const auto table = main.query<IClientEscTree>();
    each("parent", [&] { return main->SetClientParent(parent_.get()); });
    each("initialise", [&] { return main->InitializeClass(); });
    each("connect", [&] { return main->OnConnection(); });
    each("log in", [&] { return main->OnLogin(); });
    each("text", [&] { return table->get_EscTreeString(3, text_.put()); });
    ComPtr<ITypeInfo> members;
    each("type information", [&] { return table->GetTypeInfo(0, LOCALE_NEUTRAL, members.put()); });
    each("bytes", [&] {
        HRESULT worst = S_OK;
        for (const unsigned char ch : std::string_view("\x0C text that is longer than a line \t\r\n\n\n")) {
            const HRESULT result = receive->ReceiveData(ch);
            if (FAILED(result)) worst = result;
        }
        return worst;
    });
    // Each row with fields that fit, but for those that begin or end a window.
    short rows = 0;
    table->get_EscTreeCount(&rows);
    SAFEARRAY* fields = stringArray(1, {L"2", L"3", L"4", L"20", L"8", L"<html>a <a href=x>help</a> text"});
    for (short row = 1; row <= rows; ++row) {
        if (row == rows::kNewScreen || row == rows::kCloseScreen) continue;
        long result = 0;
        each("row " + std::to_string(row), [&] { return table->EscTreeProcess(row, &fields, &result); });
    }
    HRESULT made = S_OK;
    each(
        "new screen", [&] { return made = process(*table, rows::kNewScreen, {}); },
        [&] {
            if (SUCCEEDED(made)) process(*table, rows::kCloseScreen, {});
        });
    each(
        "close screen", [&] { return process(*table, rows::kCloseScreen, {}); },
        [&] { process(*table, rows::kNewScreen, {}); });
    EXPECT_EQ(process(*table, rows::kCloseScreen, {}), S_OK);
    Variant array;
    array.vt = VT_ARRAY | VT_BSTR;
    array.parray = fields;
    OLECHAR name[] = L"EscTreeProcess";
    LPOLESTR names = name;
    DISPID id = 0;
    each("name", [&] { return table->GetIDsOfNames(IID_NULL, &names, 1, 0, &id); });
    each("late bound", [&] {
        std::array<VARIANT, 2> arguments{array, {}};
        V_VT(&arguments[1]) = VT_I2;
        V_I2(&arguments[1]) = rows::kCursorPosition;
        DISPPARAMS given{arguments.data(), nullptr, 2, 0};
        Variant result;
        return table->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &given, &result, nullptr, nullptr);
    });
    EXPECT_EQ(receive->ReceiveData('A'), S_OK) << "it works all the same";
    each("close", [&] { return main->OnClose(); });
    each("destroy", [&] { return main->DestroyClass(); });
}

void ComMemory::useLabel() {
    each("create", [&] { return library->create<IUnknown>(CLSID_HTMLLabel) ? S_OK : E_OUTOFMEMORY; });
    const auto open = [&] {
        try {
            control.emplace(library->create<IUnknown>(CLSID_HTMLLabel), form);
            control->show({0, 0, 300, 200});
        } catch (const ComFailure&) {
            return E_OUTOFMEMORY;
        }
        return S_OK;
    };
    each("open", open, [&] { control.reset(); });
    ASSERT_EQ(open(), S_OK);
    label = control->query<::IHTMLLabel>();
    const auto saving = control->query<IPersistStreamInit>();
    const Bstr document(
        L"<title>t</title><h1>head</h1><a href=x>link</a><table border=1><tr><td>cell<td>cell"
        L"</table><ul><li>item</ul><font face='Courier New' size=4>text</font><img src=a.bmp>");
    Bstr face(L"Times New Roman");
    each("document", [&] { return label->put_DocumentHTML(document.get()); });
    each("text", [&] { return label->get_DocumentHTML(text_.put()); });
    each("said", [&] { return label->get_Text(text_.put()); });
    EXPECT_EQ(text_.view(), L"head\r\nlink\r\ncell\tcell\r\nitem\r\ntext");
    each("title", [&] { return label->get_DocumentTitle(text_.put()); });
    each("font", [&] { return label->put_DefaultFontName(face.get()); });
    each("size", [&] { return label->put_DefaultFontSize(13); });
    each("colour", [&] { return label->put_BackColor(0x00C0FFC0); });
    const auto paint = [&] {
        RedrawWindow(control->window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        return S_OK;
    };
    each("paint", paint);
    each("move", [&] {
        control->move({0, 0, 250, 150});
        return paint();
    });
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    each("save", [&] {
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        return saving->Save(stream.get(), TRUE);
    });
    each("load", [&] {
        const auto fresh = library->create<IPersistStreamInit>(CLSID_HTMLLabel);
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        return fresh ? fresh->Load(stream.get()) : E_OUTOFMEMORY;
    });
    const auto bag = make<TextBag>("BackColor=65280 DefaultFontName=A_name_that_is_rather_long ");
    each("load from a bag", [&] {
        const auto fresh = library->create<IPersistPropertyBag>(CLSID_HTMLLabel);
        return fresh ? fresh->Load(bag.get(), bag.get()) : E_OUTOFMEMORY;
    });
    each("save to a bag", [&] { return label.query<IPersistPropertyBag>()->Save(bag.get(), TRUE, TRUE); });
    each("draw", [&] {
        const HDC screen = GetDC(nullptr);
        const RECTL page{0, 0, 100, 100};
        const HRESULT drawn = control->query<IViewObject>()->Draw(
            DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, screen, &page, nullptr, nullptr, 0);
        ReleaseDC(nullptr, screen);
        return drawn;
    });
    EXPECT_EQ(label->get_DocumentHTML(text_.put()), S_OK);
    close();
    EXPECT_NE(text_.view().find(L"text</font>"), std::wstring_view::npos);
}

TEST_F(ComMemory, IsNeitherLostNorMisusedWhenItRunsOut) {
    // The first round without failures: what is kept for later is there then.
    useTerminal();
    useLabel();
    const FailingAllocations replaced(GetModuleHandleW(copy.c_str()));
    ASSERT_GT(replaced.functions(), 2U);
    const int drawing = countGdiObjects();
    const DWORD handles = countHandles();
    failing_ = true;
    useTerminal();
    useLabel();
    EXPECT_EQ(countGdiObjects(), drawing);
    EXPECT_EQ(countHandles(), handles);
    EXPECT_EQ(parent_->references(), 1U);
    EXPECT_GT(refused_, 100);
    EXPECT_GT(borne_, 100);
}

}  // namespace
}  // namespace kavrelon
