#include "samplehost/win32/HelpViewer.h"

#include <olectl.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "samplehost/com/ComFailure.h"
#include "samplehost/win32/Snapshot.h"
#include "support/PictureName.h"
#include "support/SystemColours.h"
#include "support/WebAddress.h"
#include "support/com/ComText.h"
#include "support/win32/Module.h"

namespace kavrelon {
namespace {

constexpr char kWindowClass[] = "samplehost.HelpViewer";
constexpr DISPID kHyperlinkClick = 1;
constexpr DISPID kLoadImage = 2;
constexpr UINT_PTR kPictureTimer = 1;

std::string readDocument(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("The document " + path + " could not be read.");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string folderOf(const std::string& path) {
    return path.substr(0, path.find_last_of("\\/:") + 1);
}

}  // namespace

HelpViewer::HelpViewer(const HostOptions& options)
    : options_(options),
      document_(readDocument(*options.helpViewerFile)),
      classes_(PlugInClasses::open(options)) {
    openWindow();
    openLabel();
    if (options_.snapshotFile) SetTimer(window_, kPictureTimer, options_.snapshotAfter, nullptr);
}

HelpViewer::~HelpViewer() {
    if (sink_) sink_->detach();
    label_ = {};
    control_.reset();
    if (window_ == nullptr) return;
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

void HelpViewer::run() {
    MSG message{};
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        if (control_->translate(message)) continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    if (!failure_.empty()) throw std::runtime_error(failure_);
}

void HelpViewer::openWindow() {
    WNDCLASSA description{};
    description.lpfnWndProc = procedure;
    description.hInstance = moduleInstance();
    description.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));  // the arrow
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = kWindowClass;
    RegisterClassA(&description);
    window_ = CreateWindowA(kWindowClass, "", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                            CW_USEDEFAULT, 640, 480, nullptr, nullptr, description.hInstance, nullptr);
    if (window_ == nullptr) throw std::runtime_error("There is no window for the document.");
    SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void HelpViewer::openLabel() {
    control_.emplace(classes_->createLabel(), window_);
    label_ = control_->query<IHTMLLabel>();
    if (!label_) throw ComFailure("The class kavrelon.HTMLLabel is no label of this host.");
    *sink_.put() = new DispatchObject(
        [this](DISPID event, DISPPARAMS& arguments, VARIANT*) { return onEvent(event, arguments); });
    control_->connect(*sink_);

    label_->put_BorderStyle(1);
    label_->put_BackColor(systemColour(COLOR_WINDOW));
    label_->put_EnableScroll(VARIANT_TRUE);
    label_->put_EnableAnchors(VARIANT_TRUE);
    label_->put_EnableTooltips(VARIANT_TRUE);
    RECT inner{};
    GetClientRect(window_, &inner);
    control_->show(inner);
    ShowWindow(window_, SW_SHOWNORMAL);
    setDocument();
    control_->takeFocus();
}

void HelpViewer::setDocument() {
    if (!label_) return;
    check(label_->put_DocumentHTML(toBstr(document_).get()), "The document could not be shown");
    Bstr title;
    check(label_->get_DocumentTitle(title.put()), "The document's title could not be read");
    SetWindowTextW(window_, title.get());
}

// A label keeps its layout when it is resized. Setting the text again fits it to the new size.
void HelpViewer::fitLabel() {
    if (!label_ || IsIconic(window_)) return;
    RECT inner{};
    GetClientRect(window_, &inner);
    control_->move(inner);
    if (!dragged_) setDocument();
}

LRESULT CALLBACK HelpViewer::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const viewer = reinterpret_cast<HelpViewer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (viewer == nullptr) return DefWindowProcA(window, message, wParam, lParam);
    try {
        return viewer->handle(message, wParam, lParam);
    } catch (const std::exception& error) {
        viewer->failure_ = error.what();
        PostQuitMessage(1);
        return 0;
    }
}

LRESULT HelpViewer::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            fitLabel();
            return 0;
        case WM_ENTERSIZEMOVE:
            dragged_ = true;
            return 0;
        case WM_EXITSIZEMOVE:
            dragged_ = false;
            setDocument();
            return 0;
        case WM_SETFOCUS:
            if (control_) control_->takeFocus();
            return 0;
        case WM_TIMER:
            takePicture();
            return 0;
        case WM_CLOSE:
            PostQuitMessage(0);
            return 0;
        default:
            return DefWindowProcA(window_, message, wParam, lParam);
    }
}

void HelpViewer::takePicture() {
    KillTimer(window_, kPictureTimer);
    saveSnapshot(window_, *options_.snapshotFile);
    PostQuitMessage(0);
}

// The arguments come in reverse order.
HRESULT HelpViewer::onEvent(DISPID event, DISPPARAMS& arguments) {
    if (event == kHyperlinkClick && arguments.cArgs == 1 && arguments.rgvarg[0].vt == VT_BSTR) {
        follow(toAnsi(bstrView(arguments.rgvarg[0].bstrVal)));
    }
    if (event == kLoadImage && arguments.cArgs == 2 && arguments.rgvarg[1].vt == VT_BSTR &&
        arguments.rgvarg[0].vt == (VT_VARIANT | VT_BYREF)) {
        VARIANT& answer = *arguments.rgvarg[0].pvarVal;
        if (auto found = picture(toAnsi(bstrView(arguments.rgvarg[1].bstrVal)))) {
            VariantClear(&answer);
            answer.vt = VT_DISPATCH;
            answer.pdispVal = found.detach();
        }
    }
    return S_OK;
}

// The document may come from anywhere: its links may only open pages in the user's browser.
void HelpViewer::follow(const std::string& link) {
    if (webAddressOf(link) == WebAddress::Page) {
        ShellExecuteA(window_, "open", link.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    } else {
        MessageBeep(MB_OK);
    }
}

ComPtr<IDispatch> HelpViewer::picture(const std::string& name) const {
    ComPtr<IPictureDisp> picture;
    if (!isPlainFileName(name)) return {};
    const std::string path = folderOf(*options_.helpViewerFile) + name;
    ComPtr<IStream> file;
    if (FAILED(SHCreateStreamOnFileA(path.c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, file.put()))) return {};
    OleLoadPicture(file.get(), 0, FALSE, IID_IPictureDisp, picture.putVoid());
    return picture.query<IDispatch>();
}

}  // namespace kavrelon
