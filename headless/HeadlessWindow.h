#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "headless/HeadlessDesktop.h"
#include "headless/ShownCells.h"
#include "support/Geometry.h"
#include "terminal/TermWindow.h"

namespace kavrelon {

/// A terminal window in memory: it keeps what each cell shows, cells being 8 x 16 pixels in every font,
/// of 10 points whatever is asked for. Its inner area, 1056 x 800 at first, has the same size in every state.
/// For tests, tools and measurements.
class HeadlessWindow final : public TermWindow {
  public:
    static constexpr Size kCell{8, 16};
    static constexpr Size kInner{1056, 800};
    static constexpr double kPoints = 10;

    /// The desktop must outlive the window.
    HeadlessWindow(HeadlessDesktop& desktop, std::weak_ptr<TermWindowEvents> events);
    ~HeadlessWindow() override;
    HeadlessWindow(const HeadlessWindow&) = delete;
    HeadlessWindow& operator=(const HeadlessWindow&) = delete;

    const ShownCells& cells() const { return cells_; }
    bool visible() const { return visible_; }
    bool timerEnabled(TermTimer timer) const { return timers_[static_cast<std::size_t>(timer)]; }
    int checkedFontEntry() const { return checkedFontEntry_; }
    int checkedPrinterTypeEntry() const { return checkedPrinterTypeEntry_; }
    bool CRtoCRLFChecked() const { return CRtoCRLFChecked_; }
    const std::string& screenWidthCaption() const { return screenWidthCaption_; }
    const FontChoice& font() const { return font_; }
    /// Where the cursor's cell is, as screen readers were last told.
    const Rect& caret() const { return caret_; }
    double askedFontSize() const { return askedFontSize_; }
    bool remoteMenuEnabled() const { return remoteMenuEnabled_; }
    /// The context menu last popped up.
    struct ContextMenu {
        bool copyEnabled = false;
        bool pasteEnabled = false;
        bool operator==(const ContextMenu&) const = default;
    };
    const std::optional<ContextMenu>& contextMenu() const { return contextMenu_; }
    /// What the user was told, oldest first.
    const std::vector<std::string>& failures() const { return failures_; }
    /// How often drawing calls were made, and colours and style set.
    int drawCalls() const { return drawCalls_; }
    int penCalls() const { return penCalls_; }
    /// The object that the events go to, null when it is gone.
    std::shared_ptr<TermWindowEvents> events() const { return events_.lock(); }
    /// What paints are to draw; all of the window without it.
    std::optional<Rect> due;
    /// Moves the window on the desktop, or gives its inner area another size.
    void moveTo(Point corner);
    void resize(Size inner);
    Rect rectangle() const;
    /// Fires a timer if it is enabled.
    void tick(TermTimer timer);

    bool drawable() const override { return visible_; }
    Rect dueArea() const override { return due.value_or(Rect{0, 0, innerSize().width, innerSize().height}); }
    void drawText(Point at, std::span<const std::uint8_t> text) override;
    void setPen(const Pen& pen) override;
    void drawPicture(const Picture& picture, const Rect& place, const Rect& clip) override;
    void invertBlock(const Rect& block) override;
    void clear() override;
    void clearOutsideGrid() override;
    void setGrid(const Rect& grid, Size cell) override;
    void scrollGrid(const Rect& block) override;
    void setFont(const FontChoice& font) override { font_ = font; }
    void setFontSize(double points) override { askedFontSize_ = points; }
    std::string fontName() const override { return font_.name; }
    double fontSize() const override { return kPoints; }
    double pointsPerPixel() const override { return 0.75; }
    Size measureCell() override { return kCell; }
    Size innerSize() const override;
    bool hasMemory() const override { return memory_.has_value(); }
    bool beginMemory() override;
    void endMemory() override { target_ = &cells_; }
    bool clearMemory() override;
    bool keepBlock(const Rect& block) override;
    void scrollMemory(const Rect& block) override;
    void showMemory() override;
    void dropMemory() override { memory_.reset(); }

    WindowId id() const override { return id_; }
    Point innerCorner() const override { return {}; }
    void close() noexcept override;
    void show() override;
    WindowState state() const override { return state_; }
    void setState(WindowState state) override;
    void requestInnerSize(Size) override { sendMessages(); }
    void makeActive() override;
    void setFocus() override { sendMessages(); }
    void placeCaret(const Rect& cell) override { caret_ = cell; }
    std::string caption() const override { return caption_; }
    void setCaption(const std::string& text) override { caption_ = text; }
    TitleBarSettings titleBarSettings() const override { return {}; }
    std::uint32_t styleBits() const override { return styleBits_; }
    void setStyleBits(std::uint32_t bits) override;
    void enableTimer(TermTimer timer, bool on) override { timers_[static_cast<std::size_t>(timer)] = on; }
    void beep(Tone tone) override;
    std::optional<std::string> clipboardText(bool bytes) override;
    bool setClipboardText(const std::string& text) override;
    bool clearClipboard() override;
    void showContextMenu(bool copyEnabled, bool pasteEnabled) override {
        contextMenu_ = ContextMenu{copyEnabled, pasteEnabled};
        sendMessages();
    }
    void checkFontEntry(int index) override { checkedFontEntry_ = index; }
    void checkPrinterTypeEntry(int index) override { checkedPrinterTypeEntry_ = index; }
    void checkCRtoCRLF(bool on) override { CRtoCRLFChecked_ = on; }
    void setScreenWidthCaption(std::string_view caption) override { screenWidthCaption_ = caption; }
    void enableRemoteMenu(bool enabled) override { remoteMenuEnabled_ = enabled; }
    void reportFailure(const std::string& text) override;
    bool confirm(const std::string& text) override;

  private:
    template <class Visit>
    void forEachCell(const Rect& block, Visit visit);
    void sendResize();
    void sendMove();
    /// False when the window has been closed in them.
    bool sendMessages();

    HeadlessDesktop& desktop_;
    WindowId id_;
    std::weak_ptr<TermWindowEvents> events_;
    Point corner_;
    Size inner_ = kInner;
    ShownCells cells_;
    std::optional<ShownCells> memory_;
    /// What text and pictures are drawn on.
    ShownCells* target_ = &cells_;
    Rect grid_;
    Rect caret_;
    Pen pen_;
    FontChoice font_{"", 0};
    double askedFontSize_ = kPoints;
    WindowState state_ = WindowState::Normal;
    std::uint32_t styleBits_ = 0xCF0000;
    bool visible_ = false;
    bool timers_[2] = {};
    int checkedFontEntry_ = 0;
    int checkedPrinterTypeEntry_ = -1;
    bool CRtoCRLFChecked_ = false;
    int drawCalls_ = 0;
    int penCalls_ = 0;
    bool remoteMenuEnabled_ = false;
    std::optional<ContextMenu> contextMenu_;
    std::vector<std::string> failures_;
    std::string screenWidthCaption_;
    std::string caption_ = "Terminal";
};

}  // namespace kavrelon
