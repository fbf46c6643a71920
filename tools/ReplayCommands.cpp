#include "headless/FindNamed.h"
#include "headless/HeadlessHelpWindow.h"
#include "support/Keys.h"
#include "terminal/frmTerm.h"
#include "tools/JsonLine.h"
#include "tools/ReplayDump.h"
#include "tools/ReplaySession.h"

namespace kavrelon {

struct ReplaySession::Commands {
    using Session = ReplaySession;
    using Operands = ReplayOperands;

    // What comes from the host

    static void bytes(Session& session, Operands& operands) {
        for (const std::uint8_t byte : operands.bytes()) {
            session.attempt([&] { session.terminal->IClientReceive_ReceiveData(byte); });
        }
    }

    static void seq(Session& session, Operands& operands) {
        const std::int16_t index = operands.number();
        Texts fields;
        while (!operands.empty()) fields.push_back(operands.string());
        session.sequence(index, fields);
    }

    static void stream(Session& session, Operands& operands) { session.feed(operands.bytes()); }

    static void cmd(Session& session, Operands& operands) {
        bool processed = false;
        session.form().ProcessCmd(operands.string(), processed);
        session.print(JsonLine().beginObject().key("processed").value(processed).endObject().text());
    }

    static void paint(Session& session, Operands& operands) {
        session.form().screen().PaintOn(operands.choice("on", "off"));
    }

    template <void (clsTerminal::*member)()>
    static void host(Session& session, Operands&) {
        (*session.terminal.*member)();
    }

    // What the user does

    static void key(Session& session, Operands& operands) {
        const std::int16_t code = operands.number();
        KeyStroke key{.keyCode = code, .Shift = operands.number()};
        session.form().Form_KeyDown(key);
    }

    static void mouse(Session& session, Operands& operands) {
        const std::string what = operands.word();
        const std::int16_t button = operands.number();
        if (button != buttons::kLeft && button != buttons::kRight) {
            operands.fail("the mouse has buttons 1 and 2");
        }
        const Point place{operands.number(), operands.number()};
        frmTerm& form = session.form();
        if (what == "down") {
            form.Form_MouseDown(static_cast<MouseButton>(button), place);
        } else if (what == "move") {
            form.Form_MouseMove(button == buttons::kLeft, place);
        } else if (what == "up") {
            form.Form_MouseUp(static_cast<MouseButton>(button), place);
        } else {
            operands.fail("mouse takes down, move or up");
        }
    }

    static void clip(Session& session, Operands& operands) {
        session.platform.desktop.clipboard = operands.string();
    }

    static void answer(Session& session, Operands& operands) {
        session.platform.desktop.answer = operands.choice("yes", "no");
    }

    template <void (frmTerm::*handler)() noexcept>
    static void click(Session& session, Operands&) {
        (session.form().*handler)();
    }

    template <void (frmTerm::*handler)(std::int16_t) noexcept>
    static void tell(Session& session, Operands& operands) {
        (session.form().*handler)(operands.number());
    }

    static void closebox(Session& session, Operands& operands) {
        const HeadlessHelpWindow* const box = session.boxWindow(operands.number());
        if (box != nullptr) box->events()->mnuRightClickClose_Click();
    }

    /// From the corner of the text, where no link is.
    static void dragbox(Session& session, Operands& operands) {
        const HeadlessHelpWindow* const box = session.boxWindow(operands.number());
        const Point travel{operands.number(), operands.number()};
        if (box == nullptr) return;
        const std::shared_ptr<HTMLLabel> label = box->label();
        HeadlessDesktop& desktop = session.platform.desktop;
        const Point from{box->rectangle().left, box->rectangle().top};
        desktop.cursor = from;
        desktop.heldButtons = buttons::kLeft;
        label->picViewPort_MouseDown(buttons::kLeft, 0, {});
        desktop.cursor = {from.x + travel.x, from.y + travel.y};
        label->picViewPort_MouseMove(buttons::kLeft, 0, travel);
        desktop.heldButtons = 0;
        label->picViewPort_MouseUp(buttons::kLeft, 0, travel);
    }

    // What the window and its timers do

    static void redraw(Session& session, Operands&) { session.form().Redrawscreen(); }

    static void tick(Session& session, Operands& operands) {
        const bool cursor = operands.choice("cursor", "beep");
        session.window().tick(cursor ? TermTimer::cursor_timer : TermTimer::tmrBeep);
    }

    static void resize(Session& session, Operands& operands) {
        const Size inner{operands.number(), operands.number()};
        if (inner.width < 0 || inner.height < 0) operands.fail("a window has no size below 0");
        session.window().resize(inner);
    }

    static void move(Session& session, Operands& operands) {
        const Point corner{operands.number(), operands.number()};
        session.window().moveTo(corner);
    }

    template <WindowState state>
    static void become(Session& session, Operands&) {
        session.window().setState(state);
    }

    // What is printed

    static void state(Session& session, Operands&) {
        session.print(stateLine(session.form(), session.terminal->topIndex()));
    }

    static void screen(Session& session, Operands&) {
        session.print(screenLine(session.form(), session.window()));
    }

    static void boxes(Session& session, Operands&) {
        session.print(boxesLine(session.form().HelpBoxes(), session.platform.desktop));
    }

    static void pictures(Session& session, Operands&) {
        session.print(picturesLine(session.form().screen().pictures()));
    }

    static void settings(Session& session, Operands&) {
        session.print(settingsLine(TextProfileFile::lines(session.parent->iniFile)));
    }

    static void menus(Session& session, Operands&) { session.print(menusLine(session.form().hostMenus())); }

    static constexpr Command kAll[] = {
        {"bytes", kAny, bytes},
        {"seq", kAny, seq},
        {"stream", kAny, stream},
        {"cmd", 1, cmd},
        {"login", 0, host<&clsTerminal::IClientMain_OnLogin>},
        {"logout", 0, host<&clsTerminal::IClientMain_OnLogOut>},
        {"close", 0, host<&clsTerminal::IClientMain_OnClose>},
        {"key", 2, key},
        {"press", 1, tell<&frmTerm::Form_KeyPress>},
        {"keyup", 1, tell<&frmTerm::Form_KeyUp>},
        {"mouse", 4, mouse},
        {"copy", 0, click<&frmTerm::mnuRightClickCopy_Click>},
        {"paste", 0, click<&frmTerm::mnuRightClickPaste_Click>},
        {"clear", 0, click<&frmTerm::mnuRightClickClear_Click>},
        {"clip", 1, clip},
        {"redraw", 0, redraw},
        {"expose", 0, click<&frmTerm::Form_Paint>},
        {"paint", 1, paint},
        {"tick", 1, tick},
        {"resize", 2, resize},
        {"minimise", 0, become<WindowState::Minimised>},
        {"maximise", 0, become<WindowState::Maximised>},
        {"restore", 0, become<WindowState::Normal>},
        {"move", 2, move},
        {"width", 0, click<&frmTerm::mnuFileScreenWidth_Click>},
        {"font", 1, tell<&frmTerm::mnuFontStyle_Click>},
        {"printertype", 1, tell<&frmTerm::mnuPrinterType_Click>},
        {"reset", 0, click<&frmTerm::mnuFileRest_Click>},
        {"exit", 0, click<&frmTerm::mnuFileExit_Click>},
        {"knowledge", 1, tell<&frmTerm::mnKnowledgeBaseLink_Click>},
        {"remote", 1, tell<&frmTerm::mnuRemoteConnection_Click>},
        {"answer", 1, answer},
        {"closebox", 1, closebox},
        {"dragbox", 3, dragbox},
        {"state", 0, state},
        {"screen", 0, screen},
        {"boxes", 0, boxes},
        {"pictures", 0, pictures},
        {"settings", 0, settings},
        {"menus", 0, menus},
    };
};

const ReplaySession::Command* ReplaySession::commandNamed(std::string_view name) {
    return findNamed(Commands::kAll, name);
}

}  // namespace kavrelon
