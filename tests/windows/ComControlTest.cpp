// The label as containers know it: saved, shown, moved, given keys, and ended at any time.

#include <objsafe.h>
#include <olectl.h>

#include <cmath>

#include "tests/windows/ComControlSupport.h"

namespace kavrelon {
namespace {

constexpr DISPID kHyperlinkClick = 1;
constexpr DISPID kLoadImage = 2;

TEST_F(ComControl, IsOneObjectInAllItsInterfaces) {
    const auto identity = create<IUnknown>();
    const IID* const interfaces[] = {&IID_IDispatch,          &IID_IOleObject,
                                     &IID_IOleControl,        &IID_IOleWindow,
                                     &IID_IViewObject,        &IID_IViewObject2,
                                     &IID_IPersistStreamInit, &IID_IOleInPlaceActiveObject,
                                     &IID_IPersist,           &IID_IViewObjectEx,
                                     &IID_IProvideClassInfo,  &IID_IConnectionPointContainer,
                                     &IID_IPersistStorage,    &IID_IPersistPropertyBag,
                                     &IID_IProvideClassInfo2, &IID_IOleInPlaceObject};
    for (const IID* const iid : interfaces) {
        ComPtr<IUnknown> face;
        ASSERT_EQ(identity->QueryInterface(*iid, face.putVoid()), S_OK);
        EXPECT_EQ(face.query<IUnknown>().get(), identity.get());
    }
    ComPtr<IEnumConnectionPoints> points;
    ComPtr<IConnectionPoint> events;
    IID iid{};
    identity.query<IConnectionPointContainer>()->EnumConnectionPoints(points.put());
    EXPECT_EQ(points->Next(1, events.put(), nullptr), S_OK);
    EXPECT_TRUE(events->GetConnectionInterface(&iid) == S_OK && iid == __uuidof(DHTMLLabelEvents));
    // It is not safe for scripts: its documents come from remote systems, and their links call the form.
    void* safety = nullptr;
    EXPECT_EQ(identity->QueryInterface(IID_IObjectSafety, &safety), E_NOINTERFACE);
}

TEST_F(ComControl, LoadsWhatItCanOfAPropertyBag) {
    const struct {
        const char* saved;
        BOOL saveAll;
        const char* written;
        const char* complaints;
    } cases[] = {
        {"", TRUE,
         "Appearance=1 BorderStyle=1 BackColor=-2147483633 EnableAnchors=0 EnableScroll=0 EnableTooltips=-1 "
         "DefaultFontName=MS Sans Serif DefaultFontSize=10 UnderlineLinks=-1 DefaultPadding=4 "
         "DefaultSpacing=4 ",
         ""},
        {"EnableScroll=True DefaultFontSize=8.25 BackColor=&HFF00 ", FALSE,
         "BackColor=65280 EnableScroll=-1 DefaultFontSize=8.25 ", ""},
        {"Appearance=often BorderStyle=7 BackColor=red EnableAnchors=maybe DefaultFontName=Arial "
         "DefaultFontSize=1e30 DefaultPadding=70000 DefaultSpacing=-1 ",
         FALSE, "DefaultFontName=Arial ",
         "Appearance BorderStyle BackColor EnableAnchors DefaultFontSize DefaultPadding DefaultSpacing "},
        {"BackColor=16777216 DefaultFontSize=1639 ", FALSE, "", "BackColor DefaultFontSize "},
    };
    for (const auto& [saved, saveAll, written, complaints] : cases) {
        const auto bag = make<TextBag>(saved);
        const auto persistence = create<IPersistPropertyBag>();
        EXPECT_EQ(persistence->Load(bag.get(), bag.get()), S_OK);
        EXPECT_EQ(persistence->Save(bag.get(), TRUE, saveAll), S_OK);
        EXPECT_EQ(bag->written, written);
        EXPECT_EQ(bag->complaints, complaints);
        EXPECT_EQ(persistence->InitNew(), CO_E_ALREADYINITIALIZED);
    }
}

TEST_F(ComControl, IsSavedInStreamsAndStoragesAndRefusesDamagedOnes) {
    label = create();
    label->put_DefaultFontName(Bstr(L"Times").get());
    const auto saving = label.query<IPersistStreamInit>();
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    EXPECT_EQ(saving->IsDirty(), S_OK);
    EXPECT_EQ(saving->Save(stream.get(), TRUE), S_OK);
    EXPECT_EQ(saving->IsDirty(), S_FALSE);
    ComPtr<IStorage> storage;
    StgCreateDocfile(nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE, 0,
                     storage.put());
    EXPECT_EQ(label.query<IPersistStorage>()->Save(storage.get(), TRUE), S_OK);
    EXPECT_EQ(create<IPersistStorage>()->Load(storage.get()), S_OK);

    const auto expect = [&](HRESULT result, const wchar_t* wanted) {
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        const auto fresh = create<IPersistStreamInit>();
        EXPECT_EQ(fresh->Load(stream.get()), result);
        Bstr name;
        fresh.query<::IHTMLLabel>()->get_DefaultFontName(name.put());
        EXPECT_EQ(name.view(), wanted);
    };
    expect(S_OK, L"Times");
    // Programs may set a name that cannot be saved; what was saved can be loaded all the same.
    label->put_DefaultFontName(Bstr(std::wstring(70000, L'x')).get());
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    EXPECT_EQ(saving->Save(stream.get(), TRUE), S_OK);
    expect(S_OK, L"MS Sans Serif");
    ULARGE_INTEGER size{};
    saving->GetSizeMax(&size);
    while (size.QuadPart-- > 0) {
        stream->SetSize(size);
        expect(STG_E_DOCFILECORRUPT, L"Arial");
    }
    // Signature, version, size, two choices, the length of the name.
    for (const LONG damaged : {0L, 4L, 8L, 12L, 14L, 23L}) {
        stream->Seek({}, STREAM_SEEK_SET, nullptr);
        saving->Save(stream.get(), TRUE);
        stream->Seek({{static_cast<DWORD>(damaged), 0}}, STREAM_SEEK_SET, nullptr);
        stream->Write("\x55", 1, nullptr);
        expect(STG_E_DOCFILECORRUPT, L"Arial");
    }
}

TEST_F(ComControl, RefusesPropertiesThatItCannotKeep) {
    label = create();
    const auto saving = label.query<IPersistStreamInit>();
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    saving->Save(stream.get(), TRUE);
    for (const float size : {0.0F, -3.0F, 1638.5F, HUGE_VALF, NAN}) {
        EXPECT_EQ(label->put_DefaultFontSize(size), runtimeError(380)) << size;
    }
    for (const OLE_COLOR colour :
         {0x1000000U, 0x2000000U, 0x7FFFFFFFU, 0x8000001FU, 0x80000100U, 0xFFFFFFFFU}) {
        EXPECT_EQ(label->put_BackColor(colour), runtimeError(380)) << colour;
    }
    EXPECT_EQ(label->put_DefaultPadding(-1), runtimeError(380));
    EXPECT_EQ(label->put_DefaultSpacing(-32768), runtimeError(380));
    EXPECT_EQ(takeErrorInfo(), "Invalid property value (DefaultSpacing) <kavrelon.HTMLLabel>");
    EXPECT_EQ(saving->IsDirty(), S_FALSE) << "nothing has changed";

    for (const HRESULT kept :
         {label->put_DefaultFontSize(1638), label->put_DefaultFontSize(0.5F), label->put_BackColor(0xFFFFFF),
          label->put_BackColor(0x8000001E), label->put_DefaultPadding(0), label->put_DefaultSpacing(32767)}) {
        EXPECT_EQ(kept, S_OK);
    }
}

TEST_F(ComControl, TellsItsContainerOfMouseLinksAndPictures) {
    open();
    setDocument("<A HREF=there>link</A><BR><A HREF=\"vb: Show(1, 'a, b')\">call</A><BR><IMG SRC=a.bmp>");
    EXPECT_EQ(taken(), "event 2 a.bmp ; ");
    click(viewPort(), {250, 150});
    EXPECT_EQ(taken(), "event -605 1 0 3750 2250; event -607 1 0 3750 2250; ");
    click(viewPort(), {12, 12});
    pump(300);
    EXPECT_EQ(taken(), "event -605 1 0 180 180; event 1 there; ");
    for (const WPARAM key : {VK_TAB, VK_TAB, VK_RETURN}) press(key);
    pump(300);
    EXPECT_EQ(taken(), "form 1 1 a, b; ");

    const auto ole = control->query<IOleControl>();
    for (const BOOL freeze : {TRUE, TRUE, FALSE}) ole->FreezeEvents(freeze);
    click(viewPort(), {250, 150});
    EXPECT_EQ(taken(), "");
    ole->FreezeEvents(FALSE);
    control->site().userMode = false;
    ole->OnAmbientPropertyChange(DISPID_UNKNOWN);
    EXPECT_FALSE(IsWindowEnabled(control->window())) << "a designer has the mouse";
    click(viewPort(), {250, 150});
    EXPECT_EQ(taken(), "") << "while the form is designed";
}

TEST_F(ComControl, FollowsItsContainersSizes) {
    open();
    for (const LONG size : {0L, 1L, 32767L, 200L}) {
        control->move({5, 5, 5 + size, 5 + size});
        setDocument("<TABLE><TR><TD>cell<TD>cell</TABLE>");
        RECT outer{};
        GetWindowRect(control->window(), &outer);
        EXPECT_EQ(outer.right - outer.left, size);
    }
    SIZEL extent{2540, 5080};
    EXPECT_EQ(control->query<IOleObject>()->SetExtent(DVASPECT_CONTENT, &extent), S_OK);
    EXPECT_EQ(control->site().place.bottom - control->site().place.top, 192) << "two inches";
    const RECT clip{5, 5, 50, 50};
    control->query<IOleInPlaceObject>()->SetObjectRects(&control->site().place, &clip);
    RECT seen{};
    GetWindowRgnBox(control->window(), &seen);
    EXPECT_EQ(seen.right, 45);

    open({});
    const int width = imageOf(viewPort()).width();
    control->move({0, 0, 100, 100});
    EXPECT_EQ(imageOf(viewPort()).width(), width) << "a form without WindowState leaves the parts alone";
}

TEST_F(ComControl, SharesTheKeyboardWithItsForm) {
    open();
    std::string heardByForm;
    control->site().onKey = [&](const MSG& message) {
        heardByForm += std::to_string(message.wParam) + ' ';
        return true;
    };
    control->site().onFocus = [&](bool has) { heardByForm += has ? "in " : "out "; };
    std::string lines = "<A HREF=one>one</A> <A HREF=two>two</A>";
    for (int line = 0; line < 60; ++line) lines += "<BR>line";
    setDocument(lines.c_str());
    SetForegroundWindow(form);
    click(viewPort(), {200, 20});
    EXPECT_EQ(GetFocus(), viewPort());
    EXPECT_TRUE(control->site().frame().activeObject() != nullptr);
    press(VK_NEXT);
    EXPECT_GT(GetScrollPos(FindWindowExA(control->window(), nullptr, "SCROLLBAR", nullptr), SB_CTL), 50);
    for (const WPARAM key : {VK_UP, VK_DOWN, VK_TAB, VK_TAB, VK_TAB, VK_LEFT}) press(key);
    EXPECT_EQ(heardByForm, "in 9 37 ") << "two links of the label's, then the form's turn";
    control->site().onKey = nullptr;
    for (const WPARAM key : {VK_TAB, VK_TAB, VK_TAB, VK_RETURN}) press(key);
    pump(200);
    EXPECT_EQ(heard.find("one"), std::string::npos)
        << "a Tab that nobody wants starts again at the first link";
    SetFocus(form);

    HostedControl other(create<IUnknown>(), form);
    other.show({0, 250, 300, 350});
    control->takeFocus();
    other.takeFocus();
    EXPECT_EQ(GetFocus(), viewPort(other.window()));
    EXPECT_EQ(heardByForm, "in 9 37 out in out ");
    control->query<IOleInPlaceObject>()->InPlaceDeactivate();
    EXPECT_TRUE(control->site().frame().activeObject() == nullptr && control->window() == nullptr);
}

// Each handler is called from deep within the label.
TEST_F(ComControl, MayBeUnloadedOrGivenAnotherDocumentByItsHandlers) {
    const std::function<void()> actions[] = {
        [this] { close(); },
        [this] { control->query<IOleInPlaceObject>()->InPlaceDeactivate(); },
        [this] {
            onEvent = [](DISPID) {};
            setDocument("<TITLE>another</TITLE>one");
        },
    };
    constexpr DISPID kFormsShow = kHyperlinkClick;
    for (const auto& [event, link] : {std::pair{kHyperlinkClick, "there"},
                                      {kFormsShow, "VB:Show"},
                                      {kLoadImage, ""},
                                      {DISPID{DISPID_MOUSEDOWN}, ""},
                                      {DISPID{DISPID_MOUSEUP}, ""}}) {
        for (const std::function<void()>& action : actions) {
            open();
            int calls = 0;
            onEvent = [&, awaited = event](DISPID id) {
                if (id == awaited && calls++ == 0) action();
            };
            const HWND target = viewPort();
            const auto text =
                toBstr(std::string("<A HREF=") + link + ">link</A><BR><IMG SRC=a.bmp><IMG SRC=b.bmp>");
            label->put_DocumentHTML(text.get());
            click(target, {12, 12});
            pump(event == kHyperlinkClick ? 200 : 0);
            click(target, {250, 150});
            EXPECT_GT(calls, 0) << event;
        }
    }
}

TEST_F(ComControl, DrawsItselfWithoutAWindow) {
    label = create();
    const RECTL bounds{50, 60, 450, 300};
    const RECTL window{0, 0, 500, 400};
    const HDC screen = GetDC(form);
    for (const auto& [metafile, content] :
         {std::pair{false, "text text"}, {true, "text text"}, {true, "<UL><LI></UL>"}}) {
        const std::string body = "<BODY BGCOLOR=#00FF00><FONT SIZE=7 COLOR=#FF0000>";
        label->put_DocumentHTML(toBstr(body + content).get());
        PatBlt(screen, 0, 0, 500, 400, BLACKNESS);
        const HDC target = metafile ? CreateMetaFileW(nullptr) : screen;
        EXPECT_EQ(label.query<IViewObject>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, target,
                                                   &bounds, metafile ? &window : nullptr, nullptr, 0),
                  S_OK);
        if (metafile) {
            const HMETAFILE file = CloseMetaFile(target);
            SetMapMode(screen, MM_ANISOTROPIC);
            SetViewportExtEx(screen, 500, 400, nullptr);
            PlayMetaFile(screen, file);
            DeleteMetaFile(file);
        }
        const WindowImage image(form);
        EXPECT_FALSE(image.all({50, 60, 450, 300}, [](COLORREF pixel) { return pixel != 0xFF; })) << metafile;
        EXPECT_EQ(image.at(440, 290), RGB(0, 0xFF, 0)) << metafile;
        EXPECT_TRUE(image.all({0, 0, 500, 60}, kBlack) && image.all({450, 0, 500, 400}, kBlack)) << metafile;
    }
    const auto view = label.query<IViewObject2>();
    SIZEL size{};
    for (const auto& [aspect, index, answer] :
         {std::tuple{DVASPECT_CONTENT, 0, DV_E_LINDEX}, {DVASPECT_ICON, -1, DV_E_DVASPECT}}) {
        const auto any = static_cast<DWORD>(aspect);
        EXPECT_EQ(view->Draw(any, index, nullptr, nullptr, nullptr, screen, &bounds, nullptr, nullptr, 0),
                  answer);
        EXPECT_EQ(view->GetExtent(any, index, nullptr, &size), answer);
    }
    ReleaseDC(form, screen);
}

TEST_F(ComControl, NeedsAFormWithAWindow) {
    for (const HWND window : {static_cast<HWND>(nullptr), reinterpret_cast<HWND>(0x7FFE)}) {
        HostedControl homeless(create<IUnknown>(), window);
        EXPECT_EQ(homeless.query<IOleObject>()->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr),
                  OLE_E_INVALIDHWND);
    }
}

TEST_F(ComControl, NoticesThatItsWindowWasDestroyed) {
    open();
    setDocument("<BODY BGCOLOR=#00FF00>text");
    std::string told;
    control->site().onDeactivate = [&] { told += "inactive "; };
    control->site().onFocus = [&](bool has) { told += has ? "in " : "out "; };
    SetForegroundWindow(form);
    control->takeFocus();
    DestroyWindow(control->window());
    EXPECT_EQ(told, "in out inactive ");
    EXPECT_TRUE(control->site().frame().activeObject() == nullptr && control->window() == nullptr);
    control->show({0, 0, 300, 200});
    EXPECT_EQ(imageOf(viewPort()).at(200, 150), RGB(0, 0xFF, 0)) << "it has another window";

    told.clear();
    DestroyWindow(form);
    EXPECT_EQ(told, "inactive ");
    EXPECT_EQ(control->query<IOleObject>()->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr),
              OLE_E_INVALIDHWND);
}

TEST_F(ComControl, LeavesNoKeyboardInAHiddenWindow) {
    open();
    SetForegroundWindow(form);
    control->takeFocus();
    ASSERT_EQ(GetFocus(), viewPort());
    bool formHears = false;
    control->site().onFocus = [&](bool has) { formHears = !has; };
    control->query<IOleObject>()->DoVerb(OLEIVERB_HIDE, nullptr, nullptr, 0, nullptr, nullptr);
    EXPECT_FALSE(IsWindowVisible(control->window()));
    EXPECT_EQ(GetFocus(), form);
    EXPECT_TRUE(formHears);
    control->takeFocus();
    EXPECT_EQ(GetFocus(), viewPort());
    control->query<IOleInPlaceObject>()->InPlaceDeactivate();
    EXPECT_EQ(GetFocus(), form) << "nor in one that is gone";
}

// This container has no ambient properties, and never asks a control to take the keyboard.
TEST_F(ComControl, LivesInTheSystemsControlWindow) {
    const HMODULE atl = LoadLibraryA("atl100.dll");
    const auto procedure = [atl](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(atl, name));
    };
    reinterpret_cast<BOOL(WINAPI*)()>(procedure("AtlAxWinInit"))();
    const HWND host = CreateWindowA("AtlAxWin100", "kavrelon.HTMLLabel", WS_CHILD | WS_VISIBLE, 10, 10, 300,
                                    200, form, nullptr, nullptr, nullptr);
    ComPtr<IUnknown> found;
    reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(procedure("AtlAxGetControl"))(host, found.put());
    label = found.query<::IHTMLLabel>();
    ASSERT_TRUE(label);
    setDocument("<BODY BGCOLOR=#00FF00>text");
    HWND outer = nullptr;
    found.query<IOleWindow>()->GetWindow(&outer);
    EXPECT_EQ(imageOf(viewPort(outer)).at(200, 150), RGB(0, 0xFF, 0));
    SetForegroundWindow(form);
    click(viewPort(outer), {20, 20});
    EXPECT_EQ(GetFocus(), viewPort(outer));
    DestroyWindow(host);
    EXPECT_FALSE(IsWindow(outer));
}

TEST_F(ComControl, LeavesNothingBehindInAThousandRounds) {
    const auto rounds = [this](int count) {
        for (int i = 0; i < count; ++i) {
            open();
            setDocument("<A HREF=a>link</A><TABLE BORDER=1><TR><TD>cell</TABLE>");
            UpdateWindow(viewPort());
        }
        close();
        return countGdiObjects();
    };
    const int before = rounds(5);
    EXPECT_EQ(rounds(1000), before);
    EXPECT_EQ(GetWindow(form, GW_CHILD), nullptr);
}

}  // namespace
}  // namespace kavrelon
