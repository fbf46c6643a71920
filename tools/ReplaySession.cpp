#include "tools/ReplaySession.h"

#include <ostream>
#include <utility>

#include "headless/HeadlessHelpWindow.h"
#include "tools/JsonLine.h"

namespace kavrelon {
namespace {

/// The beginning of an event's line.
JsonLine event(const char* name) {
    JsonLine json;
    json.beginObject().key("event").value(name);
    return json;
}

std::string eventWith(const char* name, const char* key, const std::string& value) {
    return event(name).key(key).value(value).endObject().text();
}

}  // namespace

ReplaySession::ReplaySession(std::ostream& out, std::string iniFile) : out_(out) {
    parent->iniFile = std::move(iniFile);
    tellOfEvents();
    connect();
}

ReplaySession::~ReplaySession() {
    terminal->IClientMain_DestroyClass();
}

void ReplaySession::tellOfEvents() {
    parent->onCall = [this](const char* member, const std::string* value) {
        print(value != nullptr ? eventWith(member, "value", *value) : event(member).endObject().text());
    };
    platform.desktop.onBeep = [this](int frequency, int milliseconds) {
        JsonLine json = event("Beep");
        json.key("frequency").value(std::int64_t{frequency});
        print(json.key("milliseconds").value(std::int64_t{milliseconds}).endObject().text());
    };
    platform.desktop.onClipboard = [this](const std::string& text) {
        print(eventWith("Clipboard", "value", text));
    };
    platform.desktop.onMessage = [this](const std::string& text) {
        print(eventWith("Message", "text", text));
    };
    platform.desktop.onQuestion = [this](const std::string& text) {
        print(eventWith("Question", "text", text));
    };
    platform.headlessLauncher.onShellExecute = [this](const HeadlessLauncher::Start& start, long result) {
        JsonLine json = event("ShellExecute");
        json.key("program").value(start.program).key("parameters").value(start.parameters);
        json.key("directory").value(start.directory).key("result").value(std::int64_t{result});
        print(json.endObject().text());
    };
    platform.headlessLauncher.onStart = [this](const std::string& command, long result) {
        JsonLine json = event("Start");
        json.key("command").value(command).key("result").value(std::int64_t{result});
        print(json.endObject().text());
    };
    onFailure = [this](const RuntimeError& error) { printError(error); };
}

void ReplaySession::run(const ReplayLine& line) {
    ReplayOperands operands(line);
    const std::string name = operands.word();
    const Command* const command = commandNamed(name);
    if (command == nullptr) operands.fail("unknown command \"" + name + "\"");
    if (command->operands != kAny) operands.expect(command->operands);
    attempt([&] { command->run(*this, operands); });
}

HeadlessHelpWindow* ReplaySession::boxWindow(int slot) const {
    const frmHelp* const box = form().HelpBoxes().at(slot);
    return box == nullptr ? nullptr : windowOf(platform.desktop, *box);
}

void ReplaySession::print(const std::string& line) {
    out_ << line << '\n';
}

void ReplaySession::printError(const RuntimeError& error) {
    const auto number = static_cast<std::int64_t>(error.number());
    print(JsonLine().beginObject().key("error").value(number).endObject().text());
}

}  // namespace kavrelon
