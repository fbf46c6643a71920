#include "gdi/GdiPicture.h"

#include <ocidl.h>
#include <olectl.h>
#include <shlwapi.h>
#include <wincodec.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/PictureOutline.h"

namespace kavrelon {
namespace {

constexpr int kHimetricPerInch = 2540;

using FileBytes = std::vector<std::uint8_t>;

struct CloseFile {
    void operator()(HANDLE file) const noexcept { CloseHandle(file); }
};
using File = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseFile>;

/// Initialises COM on this thread for the length of a scope, in case the program has not done so.
class ComInUse {
  public:
    ComInUse() : begun_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComInUse() {
        if (begun_) CoUninitialize();
    }
    ComInUse(const ComInUse&) = delete;
    ComInUse& operator=(const ComInUse&) = delete;

  private:
    bool begun_;
};

/// The bytes of a file; none when it is missing, not on a disk, or too large for a picture.
FileBytes contentOf(const std::wstring& path) {
    const HANDLE handle =
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return {};
    const File file(handle);
    LARGE_INTEGER size{};
    if (GetFileType(handle) != FILE_TYPE_DISK || !GetFileSizeEx(handle, &size)) return {};
    if (size.QuadPart > static_cast<LONGLONG>(kMostPictureBytes)) return {};
    FileBytes content(static_cast<std::size_t>(size.QuadPart));
    DWORD read = 0;
    if (!ReadFile(handle, content.data(), static_cast<DWORD>(content.size()), &read, nullptr)) return {};
    content.resize(read);
    return content;
}

/// The platform's decoder for a format, whatever other decoders are installed.
const CLSID& decoderOf(PictureFormat format) {
    switch (format) {
        case PictureFormat::Gif:
            return CLSID_WICGifDecoder;
        case PictureFormat::Jpeg:
            return CLSID_WICJpegDecoder;
        case PictureFormat::Png:
            return CLSID_WICPngDecoder;
        case PictureFormat::Ico:
            return CLSID_WICIcoDecoder;
        default:
            return CLSID_WICBmpDecoder;
    }
}

PixelBitmap decoded(const PictureOutline& outline, IStream& stream) {
    const ComInUse com;
    ComPtr<IWICBitmapDecoder> decoder;
    ComPtr<IWICBitmapFrameDecode> frame;
    ComPtr<IWICImagingFactory> factory;
    ComPtr<IWICFormatConverter> source;
    if (FAILED(CoCreateInstance(decoderOf(outline.format), nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(IWICBitmapDecoder), decoder.putVoid())) ||
        FAILED(decoder->Initialize(&stream, WICDecodeMetadataCacheOnDemand)) ||
        FAILED(decoder->GetFrame(outline.frame, frame.put())) ||
        FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                __uuidof(IWICImagingFactory), factory.putVoid())) ||
        FAILED(factory->CreateFormatConverter(source.put())) ||
        FAILED(source->Initialize(frame.get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone,
                                  nullptr, 0, WICBitmapPaletteTypeCustom))) {
        return {};
    }
    UINT width = 0;
    UINT height = 0;
    if (FAILED(source->GetSize(&width, &height))) return {};
    const Size image{static_cast<int>(width), static_cast<int>(height)};
    if (!withinPictureLimits(image)) return {};
    const Size whole = outline.around(image);
    if (!withinPictureLimits(whole)) return {};
    PixelBitmap bitmap(whole);
    if (!bitmap) return {};
    const auto row = static_cast<std::size_t>(whole.width);
    const std::span<Pixel> pixels = bitmap.pixels().subspan(static_cast<std::size_t>(outline.at.y) * row +
                                                            static_cast<std::size_t>(outline.at.x));
    if (FAILED(source->CopyPixels(nullptr, static_cast<UINT>(row * sizeof(Pixel)),
                                  static_cast<UINT>(pixels.size_bytes()),
                                  reinterpret_cast<BYTE*>(pixels.data())))) {
        return {};
    }
    return bitmap;
}

ComPtr<IPicture> metafile(IStream& stream) {
    ComPtr<IPicture> picture;
    OleLoadPicture(&stream, 0, FALSE, __uuidof(IPicture), picture.putVoid());
    return picture;
}

ComPtr<IStream> streamOf(const FileBytes& bytes) {
    ComPtr<IStream> stream;
    *stream.put() = SHCreateMemStream(bytes.data(), static_cast<UINT>(bytes.size()));
    return stream;
}

}  // namespace

GdiPicture::GdiPicture(PixelBitmap pixels)
    : pixels_(std::move(pixels)), size_(pixels_.size()), opaque_(allOpaque(pixels_.pixels())) {}

GdiPicture::GdiPicture(ComPtr<IPicture> object, Size size) : object_(std::move(object)), size_(size) {}

std::shared_ptr<GdiPicture> GdiPicture::load(const std::wstring& path) {
    // The platform would ignore what follows this character, and what precedes it may name another file.
    if (path.find(L'\0') != std::wstring::npos) return nullptr;
    try {
        FileBytes file = contentOf(path);
        const std::optional<PictureOutline> outline = outlineOf(file);
        if (!outline) return nullptr;
        // An animation is cut after its first image: the decoder would decode all of them.
        file.resize(outline->length);
        if (outline->format == PictureFormat::Gif) file.push_back(';');
        const ComPtr<IStream> stream = streamOf(file);
        if (!stream) return nullptr;
        if (outline->format == PictureFormat::Wmf) return from(metafile(*stream).get());
        PixelBitmap pixels = decoded(*outline, *stream);
        return pixels ? std::shared_ptr<GdiPicture>(new GdiPicture(std::move(pixels))) : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

std::shared_ptr<GdiPicture> GdiPicture::from(IPicture* picture) {
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    if (picture == nullptr || FAILED(picture->get_Width(&width)) || FAILED(picture->get_Height(&height)))
        return nullptr;
    const OwnedContext screen(CreateICA("DISPLAY", nullptr, nullptr, nullptr));
    const Size size{
        MulDiv(static_cast<int>(width), GetDeviceCaps(screen.get(), LOGPIXELSX), kHimetricPerInch),
        MulDiv(static_cast<int>(height), GetDeviceCaps(screen.get(), LOGPIXELSY), kHimetricPerInch)};
    if (size.width <= 0 || size.height <= 0) return nullptr;
    return std::shared_ptr<GdiPicture>(new GdiPicture(ComPtr<IPicture>(picture), size));
}

void GdiPicture::draw(HDC target, const RECT& place) const noexcept {
    if (place.right <= place.left || place.bottom <= place.top) return;
    const PixelBitmap& pixels =
        scaledTo({static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top)});
    if (pixels) {
        pixels.draw(target, place, opaque_);
    } else if (object_) {
        drawObject(target, place);
    }
}

void GdiPicture::drawObject(HDC target, const RECT& place) const noexcept {
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    if (FAILED(object_->get_Width(&width)) || FAILED(object_->get_Height(&height))) return;
    const int before = SaveDC(target);
    // The origin of picture objects is at the bottom.
    object_->Render(target, place.left, place.top, place.right - place.left, place.bottom - place.top, 0,
                    height, width, -height, &place);
    RestoreDC(target, before);
}

// Drawing an object can take long, so it is rendered to pixels. Drawing it on black and on white shows how
// transparent each pixel is.
bool GdiPicture::renderTo(PixelBitmap& pixels) const {
    PixelBitmap onWhite(pixels.size());
    if (!onWhite) return false;
    std::ranges::fill(onWhite.pixels(), ~Pixel{0});
    for (const PixelBitmap* ground : {&pixels, &onWhite}) {
        if (!ground->paint([&](HDC context) {
                drawObject(context, {0, 0, pixels.size().width, pixels.size().height});
            })) {
            return false;
        }
    }
    std::ranges::transform(pixels.pixels(), onWhite.pixels(), pixels.pixels().begin(), seenOnBlackAndWhite);
    return true;
}

const PixelBitmap& GdiPicture::scaledTo(Size wanted) const noexcept {
    // For a place far larger than any window the pixels are stretched while drawing, when most of it is
    // clipped.
    if ((pixels_ && wanted == size_) || !withinPictureLimits(wanted)) return pixels_;
    if (scaled_ && scaled_.size() == wanted) return scaled_;
    try {
        scaled_ = PixelBitmap();
        PixelBitmap scaled(wanted);
        if (!scaled) return pixels_;
        if (object_) {
            if (!renderTo(scaled)) return pixels_;
        } else {
            scalePixels(pixels_.pixels(), size_, scaled.pixels(), wanted);
        }
        scaled_ = std::move(scaled);
        return scaled_;
    } catch (const std::bad_alloc&) {
        return pixels_;
    }
}

}  // namespace kavrelon
