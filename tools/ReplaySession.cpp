#include "tools/ReplaySession.h"

#include <map>
#include <ostream>
#include <utility>
#include <vector>

#include "headless/NumberIn.h"
#include "terminal/frmTerm.h"
#include "tools/JsonLine.h"
#include "tools/ReplayDump.h"

namespace kavrelon {
namespace {

JsonLine event(const char* name) {
    JsonLine json;
    json.beginObject().key("event").value(name);
    return json;
}

}  // namespace

/// The operands of a line, taken one by one.
class ReplaySession::Operands {
  public:
    explicit Operands(const ReplayLine& line) : line_(line) {}

    bool empty() const { return next_ == line_.words.size(); }

    std::string word() {
        if (empty() || line_.words[next_].quoted) fail("a word is missing");
        return line_.words[next_++].text;
    }

    std::string string() {
        if (empty() || !line_.words[next_].quoted) fail("a string in double quotes is missing");
        return line_.words[next_++].text;
    }

    std::int16_t number() {
        const std::string text = word();
        const auto value = numberIn<std::int16_t>(text);
        if (!value) fail("\"" + text + "\" is no 16-bit number");
        return *value;
    }

    std::vector<std::uint8_t> bytes() {
        std::vector<std::uint8_t> bytes;
        while (!empty()) {
            const std::string text = word();
            const int byte = hexByte(text);
            if (byte < 0) fail("\"" + text + "\" is no two-digit hex byte");
            bytes.push_back(static_cast<std::uint8_t>(byte));
        }
        return bytes;
    }

    /// Takes one of two words; whether it is the first.
    bool choice(const std::string& yes, const std::string& no) {
        const std::string text = word();
        if (text != yes && text != no) fail("\"" + text + "\" is neither " + yes + " nor " + no);
        return text == yes;
    }

    void expect(int count) const {
        const auto given = static_cast<int>(line_.words.size() - next_);
        if (count != kAny && given != count) {
            fail("the command takes " + std::to_string(count) + " operands, not " + std::to_string(given));
        }
    }

    [[noreturn]] void fail(const std::string& what) const { throw ReplaySyntaxError(line_.number, what); }

  private:
    const ReplayLine& line_;
    std::size_t next_ = 0;
};

ReplaySession::ReplaySession(std::ostream& out, std::string iniFile) : out_(out) {
    parent->iniFile = std::move(iniFile);
    parent->onCall = [this](const char* member, const std::string* value) {
        JsonLine json = event(member);
        if (value != nullptr) json.key("value").value(*value);
        print(json.endObject().text());
    };
    platform.desktop.onBeep = [this](int frequency, int milliseconds) {
        print(event("Beep")
                  .key("frequency")
                  .value(std::int64_t{frequency})
                  .key("milliseconds")
                  .value(std::int64_t{milliseconds})
                  .endObject()
                  .text());
    };
    platform.desktop.onClipboard = [this](const std::string& text) {
        print(event("Clipboard").key("value").value(text).endObject().text());
    };
    onFailure = [this](const RuntimeError& error) { printError(error); };
    connect();
}

ReplaySession::~ReplaySession() {
    terminal->IClientMain_DestroyClass();
}

template <class Call>
void ReplaySession::attempt(Call call) {
    try {
        call();
    } catch (const RuntimeError& error) {
        printError(error);
    }
}

void ReplaySession::run(const ReplayLine& line) {
    Operands operands(line);
    const std::string name = operands.word();
    const Command command = commandNamed(name);
    if (command.run == nullptr) operands.fail("unknown command \"" + name + "\"");
    operands.expect(command.operands);
    attempt([&] { command.run(*this, operands); });
}

ReplaySession::Command ReplaySession::commandNamed(std::string_view name) {
    static const std::map<std::string_view, Command> commands{
        {"bytes",
         {kAny,
          [](ReplaySession& session, Operands& operands) {
              for (const std::uint8_t byte : operands.bytes()) {
                  session.attempt([&] { session.terminal->IClientReceive_ReceiveData(byte); });
              }
          }}},
        {"seq",
         {kAny, [](ReplaySession& session, Operands& operands) { session.processSequence(operands); }}},
        {"stream",
         {kAny, [](ReplaySession& session, Operands& operands) { session.feed(operands.bytes()); }}},
        {"login", {0, [](ReplaySession& session, Operands&) { session.terminal->IClientMain_OnLogin(); }}},
        {"logout", {0, [](ReplaySession& session, Operands&) { session.terminal->IClientMain_OnLogOut(); }}},
        {"close", {0, [](ReplaySession& session, Operands&) { session.terminal->IClientMain_OnClose(); }}},
        {"cmd",
         {1,
          [](ReplaySession& session, Operands& operands) {
              bool processed = false;
              session.form().ProcessCmd(operands.string(), processed);
              session.print(JsonLine().beginObject().key("processed").value(processed).endObject().text());
          }}},
        {"key",
         {2,
          [](ReplaySession& session, Operands& operands) {
              const std::int16_t code = operands.number();
              KeyStroke key{.keyCode = code, .Shift = operands.number()};
              session.form().Form_KeyDown(key);
          }}},
        {"press",
         {1, [](ReplaySession& session,
                Operands& operands) { session.form().Form_KeyPress(operands.number()); }}},
        {"keyup",
         {1,
          [](ReplaySession& session, Operands& operands) { session.form().Form_KeyUp(operands.number()); }}},
        {"mouse", {4, [](ReplaySession& session, Operands& operands) { session.moveMouse(operands); }}},
        {"copy", {0, [](ReplaySession& session, Operands&) { session.form().mnuRightClickCopy_Click(); }}},
        {"paste", {0, [](ReplaySession& session, Operands&) { session.form().mnuRightClickPaste_Click(); }}},
        {"clear", {0, [](ReplaySession& session, Operands&) { session.form().mnuRightClickClear_Click(); }}},
        {"clip",
         {1, [](ReplaySession& session,
                Operands& operands) { session.platform.desktop.clipboard = operands.string(); }}},
        {"redraw",
         {0, [](ReplaySession& session, Operands&) { session.form().screen().Redrawscreen(false); }}},
        {"expose", {0, [](ReplaySession& session, Operands&) { session.form().Form_Paint(); }}},
        {"paint",
         {1, [](ReplaySession& session,
                Operands& operands) { session.form().screen().PaintOn(operands.choice("on", "off")); }}},
        {"tick",
         {1,
          [](ReplaySession& session, Operands& operands) {
              session.window().tick(operands.choice("cursor", "beep") ? TermTimer::cursor_timer
                                                                      : TermTimer::tmrBeep);
          }}},
        {"state",
         {0, [](ReplaySession& session,
                Operands&) { session.print(stateLine(session.form(), session.terminal->topIndex())); }}},
        {"screen",
         {0, [](ReplaySession& session,
                Operands&) { session.print(screenLine(session.form(), session.window())); }}},
        {"menus",
         {0,
          [](ReplaySession& session, Operands&) { session.print(menusLine(session.form().hostMenus())); }}},
    };
    const auto found = commands.find(name);
    return found == commands.end() ? Command{} : found->second;
}

void ReplaySession::processSequence(Operands& operands) {
    const std::int16_t index = operands.number();
    Texts fields;
    while (!operands.empty()) fields.push_back(operands.string());
    sequence(index, fields);
}

void ReplaySession::moveMouse(Operands& operands) {
    const std::string what = operands.word();
    const std::int16_t button = operands.number();
    if (button != 1 && button != 2) operands.fail("the mouse has buttons 1 and 2");
    const Point place{operands.number(), operands.number()};
    if (what == "down") {
        form().Form_MouseDown(static_cast<MouseButton>(button), place);
    } else if (what == "move") {
        form().Form_MouseMove(button == 1, place);
    } else if (what == "up") {
        form().Form_MouseUp(static_cast<MouseButton>(button), place);
    } else {
        operands.fail("mouse takes down, move or up");
    }
}

void ReplaySession::print(const std::string& line) {
    out_ << line << '\n';
}

void ReplaySession::printError(const RuntimeError& error) {
    print(JsonLine()
              .beginObject()
              .key("error")
              .value(static_cast<std::int64_t>(error.number()))
              .endObject()
              .text());
}

}  // namespace kavrelon
