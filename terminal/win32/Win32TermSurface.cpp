#include "terminal/win32/Win32TermSurface.h"

#include <algorithm>
#include <array>
#include <utility>

#include "gdi/GdiPicture.h"
#include "support/RuntimeError.h"
#include "support/win32/PlatformGeometry.h"

namespace kavrelon {
namespace {

LPCSTR toText(std::span<const std::uint8_t> bytes) {
    return reinterpret_cast<LPCSTR>(bytes.data());
}

}  // namespace

Win32TermSurface::Win32TermSurface(HWND window)
    : window_(window), context_(GetDC(window)), target_(context_), font_(context_) {}

void Win32TermSurface::detach() {
    select(static_cast<HFONT>(GetStockObject(SYSTEM_FONT)));
    window_ = nullptr;
    context_ = target_ = nullptr;
}

void Win32TermSurface::holdDrawing() {
    if (held_++ == 0) IntersectClipRect(context_, 0, 0, 0, 0);
}

void Win32TermSurface::resumeDrawing() {
    if (held_ > 0 && --held_ == 0) SelectClipRgn(context_, nullptr);
}

void Win32TermSurface::paintBegins(Rect due) {
    if (due.height() > 0) due.top -= std::exchange(movedUp_, 0);
    due_ = due;
}

void Win32TermSurface::drawText(Point at, Bytes text) {
    // The clipping would hold it back as well, but at the price of the call.
    if (context_ == nullptr || held_ > 0) return;
    if (font_.stale()) useFont();
    if (realised_ == nullptr) return;
    while (!text.empty()) {
        const Glyph& first = realised_->glyph(text[0]);
        const StyledFont& font = fontOf(first);
        const bool clipped = font.clipped[text[0]];
        std::size_t length = 1;
        const std::size_t limit = std::min(text.size(), advances_.size());
        while (length < limit && realised_->glyph(text[length]).source == first.source &&
               font.clipped[text[length]] == clipped) {
            ++length;
        }
        select(font.font.get());
        if (clipped) {
            drawClipped(at, text.first(length));
        } else {
            drawRun(at, text.first(length), first.source);
        }
        at.x += static_cast<int>(length) * advances_[0];
        text = text.subspan(length);
    }
}

void Win32TermSurface::drawRun(Point at, Bytes run, Glyph::Source source) {
    const auto length = static_cast<UINT>(run.size());
    if (source == Glyph::Source::Byte) {
        ExtTextOutA(target_, at.x, at.y, ETO_OPAQUE, nullptr, toText(run), length, advances_.data());
        return;
    }
    std::array<wchar_t, kMaxScreen> characters;
    std::ranges::transform(run, characters.begin(),
                           [this](std::uint8_t byte) { return realised_->glyph(byte).character; });
    ExtTextOutW(target_, at.x, at.y, ETO_OPAQUE, nullptr, characters.data(), length, advances_.data());
}

void Win32TermSurface::drawClipped(Point at, Bytes run) {
    RECT box{at.x, at.y, at.x + cell_.width, at.y + cell_.height};
    for (const std::uint8_t& byte : run) {
        const Glyph& glyph = realised_->glyph(byte);
        // Centring would tear an underline: it starts where its character does.
        const int offset = pen_.underline ? std::min<int>(glyph.offsetX, 0) : glyph.offsetX;
        const int x = static_cast<int>(box.left) + offset;
        const int y = at.y + glyph.offsetY;
        constexpr UINT options = ETO_OPAQUE | ETO_CLIPPED;
        if (glyph.source == Glyph::Source::Byte) {
            ExtTextOutA(target_, x, y, options, &box, toText({&byte, 1}), 1, advances_.data());
        } else {
            ExtTextOutW(target_, x, y, options, &box, &glyph.character, 1, advances_.data());
        }
        OffsetRect(&box, cell_.width, 0);
    }
}

void Win32TermSurface::setPen(const Pen& pen) {
    if (context_ == nullptr) return;
    pen_ = pen;
    SetTextColor(target_, pen.text);
    SetBkColor(target_, pen.back);
    useFont();
}

void Win32TermSurface::useFont() {
    if (font_.stale() && target_ == context_) makeFont();
    if (realised_ == nullptr) return;
    textFont_ = &realised_->textFont(pen_.italic, pen_.underline);
    lineFont_ = &realised_->lineFont(pen_.underline);
    select(textFont_->font.get());
}

void Win32TermSurface::makeFont() {
    select(static_cast<HFONT>(GetStockObject(SYSTEM_FONT)));
    font_.realise();
    realised_ = font_.inUse();
    // What was drawn in another font meanwhile is painted again.
    if (std::exchange(fontMissing_, font_.stale()) && !fontMissing_) InvalidateRect(window_, nullptr, FALSE);
}

void Win32TermSurface::select(HFONT font) {
    if (font == selected_) return;
    if (SelectObject(target_, font) != nullptr) selected_ = font;
}

void Win32TermSurface::drawPicture(const Picture& picture, const Rect& place, const Rect& clip) {
    const GdiPicture* const own = GdiPicture::of(picture);
    if (context_ == nullptr || held_ > 0 || own == nullptr) return;
    const int before = SaveDC(target_);
    IntersectClipRect(target_, clip.left, clip.top, clip.right, clip.bottom);
    own->draw(target_, toPlatform(place));
    RestoreDC(target_, before);
}

void Win32TermSurface::invertBlock(const Rect& block) {
    PatBlt(context_, block.left, block.top, block.width(), block.height(), DSTINVERT);
}

void Win32TermSurface::blacken(const Rect& block) {
    if (block.width() <= 0 || block.height() <= 0) return;
    PatBlt(target_, block.left, block.top, block.width(), block.height(), BLACKNESS);
}

void Win32TermSurface::clear() {
    const Size inner = innerSize();
    blacken({0, 0, inner.width, inner.height});
}

void Win32TermSurface::clearOutsideGrid() {
    const Size inner = innerSize();
    blacken({0, 0, inner.width, grid_.top});
    blacken({0, grid_.top, grid_.left, grid_.bottom});
    blacken({grid_.right, grid_.top, inner.width, grid_.bottom});
    blacken({0, grid_.bottom, inner.width, inner.height});
}

void Win32TermSurface::setGrid(const Rect& grid, Size cell) {
    grid_ = grid;
    cell_ = cell;
    // Where there is no memory for a whole row, it takes more calls.
    const int columns = std::clamp(grid.width() / std::max(cell.width, 1), 1, kMaxScreen);
    carryOn([&] { advances_.resize(static_cast<std::size_t>(columns)); });
    std::ranges::fill(advances_, cell.width);
}

void Win32TermSurface::scrollGrid(const Rect& block) {
    if (context_ == nullptr) return;
    // Asking at every scroll would cost as much as the scroll itself.
    if (!std::exchange(unpaintedKnown_, true) && !GetUpdateRect(window_, nullptr, FALSE)) movedUp_ = 0;
    movedUp_ = std::min(movedUp_ + cell_.height, block.bottom);
    const RECT moved = toPlatform(block);
    // Regions that could not be made are made when they can.
    if (uncovered_ == nullptr) uncovered_.reset(CreateRectRgn(0, 0, 0, 0));
    if (bottomRow_ == nullptr) bottomRow_.reset(CreateRectRgn(0, 0, 0, 0));
    RECT uncoveredBox{};
    ScrollDC(context_, 0, -cell_.height, &moved, &moved, uncovered_.get(), &uncoveredBox);

    const int bottomRow = std::max(block.bottom - cell_.height, block.top);
    blacken({block.left, bottomRow, block.right, block.bottom});
    // What is uncovered outside the bottom row was hidden by another window, and could not be moved.
    SetRectRgn(bottomRow_.get(), block.left, bottomRow, block.right, block.bottom);
    if (uncovered_ == nullptr || bottomRow_ == nullptr) {
        InvalidateRect(window_, &uncoveredBox, FALSE);
    } else if (CombineRgn(uncovered_.get(), uncovered_.get(), bottomRow_.get(), RGN_DIFF) > NULLREGION) {
        InvalidateRgn(window_, uncovered_.get(), FALSE);
    }
}

void Win32TermSurface::setFont(const FontChoice& font) {
    if (context_ != nullptr) font_.choose(font);
}

Size Win32TermSurface::innerSize() const {
    RECT inner{};
    if (window_ == nullptr || IsIconic(window_) || !GetClientRect(window_, &inner)) return {};
    return {static_cast<int>(inner.right), static_cast<int>(inner.bottom)};
}

bool Win32TermSurface::makeMemory() {
    // Not compatible with this window but with the desktop: this one's context must not be deleted.
    memory_->hWnd(GetDesktopWindow());
    const Size inner = innerSize();
    memory_->Width(inner.width);
    memory_->Height(inner.height);
    return hasMemory();
}

bool Win32TermSurface::hasMemory() const {
    const Size inner = innerSize();
    return memory_->IsMemDC() && memory_->Width() >= inner.width && memory_->Height() >= inner.height;
}

bool Win32TermSurface::beginMemory() {
    if (context_ == nullptr || !makeMemory()) return false;
    // A font that is due is made now: the old one would have to be off both contexts.
    if (font_.stale()) useFont();
    target_ = memory_->hDc();
    selected_ = nullptr;
    blacken({0, 0, static_cast<int>(memory_->Width()), static_cast<int>(memory_->Height())});
    setPen(pen_);
    return true;
}

void Win32TermSurface::endMemory() {
    select(static_cast<HFONT>(GetStockObject(SYSTEM_FONT)));
    target_ = context_;
    selected_ = nullptr;
    setPen(pen_);
}

bool Win32TermSurface::clearMemory() {
    if (!makeMemory()) return false;
    memory_->Cls(context_);
    return memory_->IsMemDC();
}

bool Win32TermSurface::keepBlock(const Rect& block) {
    if (!memory_->IsMemDC()) return false;
    const RECT wanted = toPlatform(block);
    RECT inner{}, kept{}, visible{}, drawn{};
    GetClientRect(window_, &inner);
    if (!IntersectRect(&kept, &wanted, &inner)) return true;
    // Parts that are out of sight were not drawn, and are no pixels of this window.
    if (GetClipBox(context_, &visible) != SIMPLEREGION) return false;
    IntersectRect(&drawn, &kept, &visible);
    if (!EqualRect(&drawn, &kept)) return false;
    return BitBlt(memory_->hDc(), kept.left, kept.top, kept.right - kept.left, kept.bottom - kept.top,
                  context_, kept.left, kept.top, SRCCOPY) != FALSE;
}

void Win32TermSurface::scrollMemory(const Rect& block) {
    if (!memory_->IsMemDC()) return;
    const HDC memory = memory_->hDc();
    const int rest = std::max(block.height() - cell_.height, 0);
    BitBlt(memory, block.left, block.top, block.width(), rest, memory, block.left, block.top + cell_.height,
           SRCCOPY);
    PatBlt(memory, block.left, block.top + rest, block.width(), block.height() - rest, BLACKNESS);
}

void Win32TermSurface::showMemory() {
    memory_->Draw(context_);
}

}  // namespace kavrelon
