#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "headless/HeadlessHelpWindow.h"
#include "headless/HeadlessPlatform.h"
#include "headless/HeadlessWindow.h"
#include "headless/TextProfileFile.h"
#include "plugin/clsTerminal.h"

namespace kavrelon {

inline void PrintTo(const CellAttr& attr, std::ostream* out) {
    *out << int{attr.Fore} << '/' << int{attr.Back} << '/' << int{attr.Mode};
}
inline void PrintTo(const Point& point, std::ostream* out) {
    *out << '(' << point.x << ',' << point.y << ')';
}

/// The run-time error that a call raises, 0 when it does not fail.
template <class Call>
int errorOf(Call&& call) {
    try {
        call();
    } catch (const RuntimeError& error) {
        return static_cast<int>(error.number());
    }
    return 0;
}

/// A host that notes what reaches it, one text a call, and fails the member that it is told to fail.
class RecordingParent final : public HostParent {
  public:
    std::vector<std::string> calls;
    std::string failing;
    std::string iniFile = "/nowhere/settings.ini";
    std::function<void()> whenWindowClosed = [] {};

    void ParentSendData(const std::string& Value) override { note("data", Value); }
    void ParentWindowClosed() override {
        note("closed");
        whenWindowClosed();
    }
    void ParentSendBreak() override { note("break"); }
    std::string ParentConnectionProfile() override { return answer("profile", "default"); }
    std::string ParentIniFile() override { return answer("ini", iniFile); }
    void ParentSendCommand(const std::string& Value) override { note("command", Value); }

  private:
    void note(const std::string& member, const std::string& value = {}) {
        calls.push_back(value.empty() ? member : member + " " + value);
        answer(member, {});
    }
    std::string answer(const std::string& member, std::string value) const {
        if (failing == member) throw std::runtime_error(member);
        return value;
    }
};

/// A plug-in on headless windows with a recording host.
class Session {
  public:
    using Texts = std::vector<std::string>;

    TextProfileFile profiles;
    HeadlessPlatform platform{profiles};
    std::shared_ptr<RecordingParent> parent = std::make_shared<RecordingParent>();
    std::unique_ptr<clsTerminal> terminal = std::make_unique<clsTerminal>(platform, "1.0.70");

    void connect() {
        terminal->IClientMain_SetClientParent(parent);
        terminal->IClientMain_InitializeClass();
        terminal->IClientMain_OnConnection();
    }

    frmTerm& form() const { return terminal->currentWindow(); }
    Screen& screen() const { return form().screen(); }
    HeadlessWindow& window() const { return *platform.windowOf(form()); }

    void type(std::string_view bytes) const {
        for (const char byte : bytes) terminal->IClientReceive_ReceiveData(static_cast<std::uint8_t>(byte));
    }
    void sequence(int index, const Texts& fields = {}, int lowerBound = 1) const {
        const std::vector<std::string_view> views(fields.begin(), fields.end());
        terminal->IClientEscTree_EscTreeProcess(static_cast<std::int16_t>(index),
                                                EscapeArguments(views, lowerBound));
    }
    void setSize(std::int16_t columns, std::int16_t lines) const { screen().ScreenSize(columns, lines); }
    void blink() const { window().tick(TermTimer::cursor_timer); }

    Point cursor() const { return {screen().CursorX(), screen().CursorY()}; }
    /// A stored cell; the attribute and the shown cell likewise, 0-based.
    std::uint8_t stored(int column, int row) const {
        return screen().buffer().record(row + 1).Chars(column + 1);
    }
    CellAttr attr(int column, int row) const { return screen().buffer().record(row + 1).Attrs(column + 1); }
    ShownCell shown(int column, int row) const { return window().cells().shown(column, row); }

    /// The stored rows with the pending column, code 0 as a dot.
    Texts storedRows() const {
        return rows(screen().CharsPerLine() + 1, [this](int column, int row) {
            const std::uint8_t ch = stored(column, row);
            return static_cast<char>(ch == 0 ? '.' : ch);
        });
    }
    /// The rows as the window shows them.
    Texts shownRows() const {
        return rows(screen().CharsPerLine(),
                    [this](int column, int row) { return static_cast<char>(shown(column, row).ch); });
    }
    /// Every shown cell, row by row, the pending column's included.
    std::vector<ShownCell> picture() const {
        std::vector<ShownCell> cells;
        for (int row = 0; row < screen().LinesPerPage(); ++row) {
            for (int column = 0; column <= screen().CharsPerLine(); ++column) {
                cells.push_back(shown(column, row));
            }
        }
        return cells;
    }
    /// The cells that stand inverted.
    std::vector<Point> marks() const {
        std::vector<Point> inverted;
        Point at;
        for (const ShownCell& cell : picture()) {
            if (cell.inverted) inverted.push_back(at);
            at = at.x < screen().CharsPerLine() ? Point{at.x + 1, at.y} : Point{0, at.y + 1};
        }
        return inverted;
    }

  private:
    template <class CharAt>
    Texts rows(int columns, CharAt charAt) const {
        Texts texts;
        for (int row = 0; row < screen().LinesPerPage(); ++row) {
            std::string text;
            for (int column = 0; column < columns; ++column) text += charAt(column, row);
            texts.push_back(std::move(text));
        }
        return texts;
    }
};

/// Tests of a connected session: the base window is shown and open, 80 x 25.
class ConnectedTest : public testing::Test, protected Session {
  protected:
    ConnectedTest() { connect(); }
};

/// A folder that is gone after the test.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kavrelon-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no scratch folder");
        path_ = name;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string file(const std::string& name) const { return (path_ / name).string(); }

  private:
    std::filesystem::path path_;
};

}  // namespace kavrelon
