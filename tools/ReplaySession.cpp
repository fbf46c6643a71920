#include "tools/ReplaySession.h"

#include <charconv>
#include <map>
#include <ostream>
#include <vector>

#include "recognizer/EscapeTree.h"
#include "tools/JsonLine.h"
#include "tools/ReplayDump.h"

namespace kavrelon {
namespace {

JsonLine event(const char* name) {
    JsonLine json;
    json.beginObject().key("event").value(name);
    return json;
}

EscapeTree pluginTree() {
    std::vector<std::string> patterns;
    for (std::int16_t row = 1; row <= escapeTable().EscTreeCount(); ++row)
        patterns.emplace_back(escapeTable().row(row).pattern);
    return EscapeTree(patterns);
}

}  // namespace

class ReplaySession::Host : public HostParent {
  public:
    Host(ReplaySession& session, std::string iniFile) : session_(session), iniFile_(std::move(iniFile)) {}

    void ParentSendData(const std::string& Value) override { print("ParentSendData", &Value); }
    void ParentWindowClosed() override { print("ParentWindowClosed", nullptr); }
    void ParentSendBreak() override { print("ParentSendBreak", nullptr); }
    std::string ParentConnectionProfile() override { return "default"; }
    std::string ParentIniFile() override { return iniFile_; }
    void ParentSendCommand(const std::string& Value) override { print("ParentSendCommand", &Value); }

  private:
    void print(const char* name, const std::string* value) {
        JsonLine json = event(name);
        if (value != nullptr) json.key("value").value(*value);
        session_.print(json.endObject().text());
    }

    ReplaySession& session_;
    std::string iniFile_;
};

class ReplaySession::Sink : public TerminalSink {
  public:
    explicit Sink(ReplaySession& session) : TerminalSink(session.terminal_), session_(session) {}

  private:
    void failed(const RuntimeError& error) override { session_.printError(error); }

    ReplaySession& session_;
};

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
        std::int16_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size())
            fail("\"" + text + "\" is no 16-bit number");
        return value;
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

    /// Whether the next word is the first of two.
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

ReplaySession::ReplaySession(std::ostream& out, std::string iniFile)
    : out_(out),
      host_(std::make_shared<Host>(*this, std::move(iniFile))),
      terminal_(platform_, "1.0.0"),
      sink_(std::make_unique<Sink>(*this)),
      recognizer_(pluginTree(), *sink_) {
    platform_.onBeep = [this](int frequency, int milliseconds) {
        print(event("Beep")
                  .key("frequency")
                  .value(std::int64_t{frequency})
                  .key("milliseconds")
                  .value(std::int64_t{milliseconds})
                  .endObject()
                  .text());
    };
    platform_.onClipboard = [this](const std::string& text) {
        print(event("Clipboard").key("value").value(text).endObject().text());
    };
    terminal_.IClientMain_SetClientParent(host_);
    terminal_.IClientMain_InitializeClass();
    terminal_.IClientMain_OnConnection();
}

ReplaySession::~ReplaySession() {
    terminal_.IClientMain_DestroyClass();
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
                  session.attempt([&] { session.terminal_.IClientReceive_ReceiveData(byte); });
              }
          }}},
        {"seq",
         {kAny, [](ReplaySession& session, Operands& operands) { session.processSequence(operands); }}},
        {"stream",
         {kAny,
          [](ReplaySession& session, Operands& operands) { session.recognizer_.feed(operands.bytes()); }}},
        {"login", {0, [](ReplaySession& session, Operands&) { session.terminal_.IClientMain_OnLogin(); }}},
        {"logout", {0, [](ReplaySession& session, Operands&) { session.terminal_.IClientMain_OnLogOut(); }}},
        {"close", {0, [](ReplaySession& session, Operands&) { session.terminal_.IClientMain_OnClose(); }}},
        {"cmd",
         {1,
          [](ReplaySession& session, Operands& operands) {
              bool processed = false;
              session.window().ProcessCmd(operands.string(), processed);
              session.print(JsonLine().beginObject().key("processed").value(processed).endObject().text());
          }}},
        {"key",
         {2,
          [](ReplaySession& session, Operands& operands) {
              const std::int16_t code = operands.number();
              KeyStroke key{.keyCode = code, .Shift = operands.number()};
              session.window().Form_KeyDown(key);
          }}},
        {"press",
         {1, [](ReplaySession& session,
                Operands& operands) { session.window().Form_KeyPress(operands.number()); }}},
        {"keyup",
         {1, [](ReplaySession& session,
                Operands& operands) { session.window().Form_KeyUp(operands.number()); }}},
        {"mouse", {4, [](ReplaySession& session, Operands& operands) { session.moveMouse(operands); }}},
        {"copy", {0, [](ReplaySession& session, Operands&) { session.window().mnuRightClickCopy_Click(); }}},
        {"paste",
         {0, [](ReplaySession& session, Operands&) { session.window().mnuRightClickPaste_Click(); }}},
        {"clear",
         {0, [](ReplaySession& session, Operands&) { session.window().mnuRightClickClear_Click(); }}},
        {"clip",
         {1, [](ReplaySession& session,
                Operands& operands) { session.platform_.clipboard = operands.string(); }}},
        {"redraw",
         {0, [](ReplaySession& session, Operands&) { session.window().screen().Redrawscreen(false); }}},
        {"expose", {0, [](ReplaySession& session, Operands&) { session.window().Form_Paint(); }}},
        {"paint",
         {1, [](ReplaySession& session,
                Operands& operands) { session.window().screen().PaintOn(operands.choice("on", "off")); }}},
        {"tick",
         {1,
          [](ReplaySession& session, Operands& operands) {
              session.shownWindow().tick(operands.choice("cursor", "beep") ? TermTimer::cursor_timer
                                                                           : TermTimer::tmrBeep);
          }}},
        {"state",
         {0, [](ReplaySession& session,
                Operands&) { session.print(stateLine(session.window(), session.terminal_.topIndex())); }}},
        {"screen",
         {0, [](ReplaySession& session,
                Operands&) { session.print(screenLine(session.window(), session.shownWindow())); }}},
        {"menus",
         {0,
          [](ReplaySession& session, Operands&) { session.print(menusLine(session.window().hostMenus())); }}},
    };
    const auto found = commands.find(name);
    return found == commands.end() ? Command{} : found->second;
}

void ReplaySession::processSequence(Operands& operands) {
    const std::int16_t index = operands.number();
    std::vector<std::string> fields;
    while (!operands.empty()) fields.push_back(operands.string());
    const std::vector<std::string_view> views(fields.begin(), fields.end());
    terminal_.IClientEscTree_EscTreeProcess(index, EscapeArguments(views));
}

void ReplaySession::moveMouse(Operands& operands) {
    const std::string what = operands.word();
    const std::int16_t button = operands.number();
    if (button != 1 && button != 2) operands.fail("the mouse has buttons 1 and 2");
    const Point place{operands.number(), operands.number()};
    frmTerm& form = window();
    if (what == "down") {
        form.Form_MouseDown(static_cast<MouseButton>(button), place);
    } else if (what == "move") {
        form.Form_MouseMove(button == 1, place);
    } else if (what == "up") {
        form.Form_MouseUp(static_cast<MouseButton>(button), place);
    } else {
        operands.fail("mouse takes down, move or up");
    }
}

HeadlessWindow& ReplaySession::shownWindow() const {
    HeadlessWindow* window = platform_.windowOf(terminal_.currentWindow());
    if (window == nullptr) raise(RuntimeErrorNumber::ObjectNotSet);
    return *window;
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
