#include "samplehost/win32/Snapshot.h"

#include <objbase.h>
// After objbase.h, whose interfaces it needs.
#include <gdiplus.h>

#include <fstream>
#include <memory>
#include <type_traits>

#include "support/win32/WideText.h"

namespace kavrelon {

namespace {

namespace gdip = Gdiplus::DllExports;

constexpr CLSID kPngEncoder{0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

/// Keeps GDI+ started.
class GdiPlus {
  public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&token_, &input, nullptr) != Gdiplus::Ok) {
            throw SnapshotError("GDI+ could not be started.");
        }
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(token_); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

  private:
    ULONG_PTR token_ = 0;
};

struct DeleteBitmap {
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
struct DeleteMemoryContext {
    void operator()(HDC context) const { DeleteDC(context); }
};
struct ReleaseScreenContext {
    void operator()(HDC context) const { ReleaseDC(nullptr, context); }
};
struct DisposeImage {
    void operator()(Gdiplus::GpBitmap* image) const { gdip::GdipDisposeImage(image); }
};
using BitmapHandle = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteBitmap>;
using MemoryContext = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteMemoryContext>;
using ScreenContext = std::unique_ptr<std::remove_pointer_t<HDC>, ReleaseScreenContext>;
using Image = std::unique_ptr<Gdiplus::GpBitmap, DisposeImage>;

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

void savePng(HBITMAP bitmap, const std::string& path) {
    const GdiPlus gdiPlus;
    Gdiplus::GpBitmap* created = nullptr;
    if (gdip::GdipCreateBitmapFromHBITMAP(bitmap, nullptr, &created) != Gdiplus::Ok) {
        throw SnapshotError("There is no memory for the window's picture.");
    }
    const Image image(created);
    if (gdip::GdipSaveImageToFile(image.get(), toWide(path).c_str(), &kPngEncoder, nullptr) != Gdiplus::Ok) {
        throw SnapshotError("The picture " + path + " could not be written.");
    }
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
    savePng(copyFromScreen(visibleArea(window)).get(), path);
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
