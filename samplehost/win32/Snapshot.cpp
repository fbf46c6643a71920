#include "samplehost/win32/Snapshot.h"

#include <wincodec.h>

#include <fstream>
#include <memory>
#include <type_traits>

#include "support/com/ComPtr.h"
#include "support/win32/WideText.h"

namespace kavrelon {

namespace {

struct DeleteBitmap {
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
struct DeleteMemoryContext {
    void operator()(HDC context) const { DeleteDC(context); }
};
struct ReleaseScreenContext {
    void operator()(HDC context) const { ReleaseDC(nullptr, context); }
};
using BitmapHandle = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteBitmap>;
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteMemoryContext>;
using ScreenContext = std::unique_ptr<std::remove_pointer_t<HDC>, ReleaseScreenContext>;

/// Copied from the screen, to show what the user sees and not what the window would draw when asked again.
BitmapHandle copyFromScreen(const RECT& area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const ScreenContext screen(GetDC(nullptr));
    const MemoryContext memory(CreateCompatibleDC(screen.get()));
    BitmapHandle bitmap(CreateCompatibleBitmap(screen.get(), width, height));
    if (!bitmap || !memory) throw SnapshotError("There is no memory for the window's picture.");
    const HGDIOBJ previous = SelectObject(memory.get(), bitmap.get());
    const BOOL copied = BitBlt(memory.get(), 0, 0, width, height, screen.get(), area.left, area.top, SRCCOPY);
    SelectObject(memory.get(), previous);
    if (!copied) throw SnapshotError("The window's picture could not be taken from the screen.");
    return bitmap;
}

/// The part of the window that is on the screen.
RECT visibleArea(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    const RECT screen{GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_YVIRTUALSCREEN),
                      GetSystemMetrics(SM_XVIRTUALSCREEN) + GetSystemMetrics(SM_CXVIRTUALSCREEN),
                      GetSystemMetrics(SM_YVIRTUALSCREEN) + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
    RECT visible{};
    if (!IntersectRect(&visible, &area, &screen)) throw SnapshotError("The window is not on the screen.");
    return visible;
}

bool savePng(HBITMAP bitmap, const std::wstring& path) {
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICBitmap> image;
    ComPtr<IWICStream> file;
    ComPtr<IWICBitmapEncoder> encoder;
    ComPtr<IWICBitmapFrameEncode> frame;
    return SUCCEEDED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                      __uuidof(IWICImagingFactory), factory.putVoid())) &&
           SUCCEEDED(factory->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, image.put())) &&
           SUCCEEDED(factory->CreateStream(file.put())) &&
           SUCCEEDED(file->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
           SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put())) &&
           SUCCEEDED(encoder->Initialize(file.get(), WICBitmapEncoderNoCache)) &&
           SUCCEEDED(encoder->CreateNewFrame(frame.put(), nullptr)) &&
           SUCCEEDED(frame->Initialize(nullptr)) && SUCCEEDED(frame->WriteSource(image.get(), nullptr)) &&
           SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
}

}  // namespace

HWND topWindowOfThread() {
    for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        const bool ours = GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
        if (ours && IsWindowVisible(window) && !IsIconic(window)) return GetAncestor(window, GA_ROOTOWNER);
    }
    return nullptr;
}

void saveSnapshot(HWND window, const std::string& path) {
    if (window == nullptr) throw SnapshotError("There is no window to take a picture of.");
    UpdateWindow(window);
    const BitmapHandle picture = copyFromScreen(visibleArea(window));
    if (!savePng(picture.get(), toWide(path))) {
        throw SnapshotError("The picture " + path + " could not be written.");
    }
}

void saveText(std::wstring_view text, const std::string& path) {
    const int length = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0');
    bytes.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_UTF8, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr)));
    const std::string unfinished = path + ".new";
    std::ofstream file(unfinished, std::ios::binary);
    file << bytes;
    file.close();
    if (!file || !MoveFileExW(toWide(unfinished).c_str(), toWide(path).c_str(), MOVEFILE_REPLACE_EXISTING))
        throw SnapshotError("The text " + path + " could not be written.");
}

}  // namespace kavrelon
