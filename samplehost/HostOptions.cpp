#include "samplehost/HostOptions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <set>
#include <sstream>
#include <string_view>

#include "support/AsciiText.h"

namespace kavrelon {
namespace {

constexpr unsigned kLargestScreen = 1024;
constexpr std::size_t kLongestTerminalType = 40;

/// The number that the whole text spells in decimal digits; nothing when it is outside the limits.
std::optional<std::uint32_t> number(std::string_view text, std::uint32_t least, std::uint32_t most) {
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || value < least || value > most) return std::nullopt;
    return value;
}

bool setAddress(HostOptions& options, const std::string& value) {
    const std::size_t colon = value.rfind(':');
    if (colon == std::string::npos) return false;
    const auto port = number(std::string_view(value).substr(colon + 1), 1, 65535);
    std::string host = value.substr(0, colon);
    if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
        host = host.substr(1, host.size() - 2);
    } else if (host.find_first_of(":[]") != std::string::npos) {
        return false;
    }
    if (!port || host.empty()) return false;
    options.source = HostOptions::Source::Connect;
    options.host = std::move(host);
    options.port = static_cast<std::uint16_t>(*port);
    return true;
}

bool setPlayFile(HostOptions& options, const std::string& value) {
    options.source = HostOptions::Source::Play;
    options.playFile = value;
    return true;
}

bool setRate(HostOptions& options, const std::string& value) {
    options.rate = number(value, 1, 1'000'000'000);
    return options.rate.has_value();
}

bool setSize(HostOptions& options, const std::string& value) {
    const std::size_t cross = value.find_first_of("xX");
    if (cross == std::string::npos) return false;
    const auto columns = number(std::string_view(value).substr(0, cross), 1, kLargestScreen);
    const auto lines = number(std::string_view(value).substr(cross + 1), 1, kLargestScreen);
    if (!columns || !lines) return false;
    options.columns = static_cast<int>(*columns);
    options.lines = static_cast<int>(*lines);
    return true;
}

bool hasExtension(std::string_view name, std::string_view inUpperCase) {
    const std::size_t stem = name.size() - std::min(name.size(), inUpperCase.size());
    return equalsInUpperCase(name.substr(stem), inUpperCase);
}

bool setSnapshot(HostOptions& options, const std::string& value) {
    options.snapshotFile = value;
    return hasExtension(value, ".PNG") || options.snapshotIsText();
}

bool setEvery(HostOptions& options, const std::string& value) {
    options.snapshotEvery = number(value, 1, std::numeric_limits<std::int32_t>::max());
    return options.snapshotEvery.has_value();
}

bool setAfter(HostOptions& options, const std::string& value) {
    const auto after = number(value, 0, std::numeric_limits<std::int32_t>::max());
    options.snapshotAfter = after.value_or(0);
    return after.has_value();
}

bool setTerminalType(HostOptions& options, const std::string& value) {
    options.terminalType = value;
    return value.size() <= kLongestTerminalType &&
           std::all_of(value.begin(), value.end(), [](char c) { return c > ' ' && c < 127; });
}

bool setCharset(HostOptions& options, const std::string& value) {
    for (const Charset charset : {Charset::Utf8, Charset::CodePage437, Charset::Windows1252}) {
        if (value != nameOf(charset)) continue;
        options.charset = charset;
        return true;
    }
    return false;
}

/// The meaning of the escape at the front of a text, after its backslash: `r`, `n`, `t`, `e`, a backslash or
/// `xHH`. Removes it from the text.
std::optional<char> takeEscape(std::string_view& text) {
    constexpr std::string_view kLetters = "rnte\\";
    constexpr std::string_view kMeanings = "\r\n\t\x1B\\";
    if (text.empty()) return std::nullopt;
    const auto letter = kLetters.find(text.front());
    if (letter != std::string_view::npos) {
        text.remove_prefix(1);
        return kMeanings[letter];
    }
    unsigned code = 0;
    if (text.front() != 'x' || text.size() < 3) return std::nullopt;
    const auto [stop, error] = std::from_chars(text.data() + 1, text.data() + 3, code, 16);
    if (error != std::errc() || stop != text.data() + 3) return std::nullopt;
    text.remove_prefix(3);
    return static_cast<char>(code);
}

bool setTypedText(HostOptions& options, const std::string& value) {
    std::string_view rest = value;
    while (!rest.empty()) {
        const char first = rest.front();
        rest.remove_prefix(1);
        const std::optional<char> typed = first == '\\' ? takeEscape(rest) : first;
        if (!typed) return false;
        options.typedText += *typed;
    }
    return true;
}

bool addCommand(HostOptions& options, const std::string& value) {
    // The terminal ignores what it does not know: a word that is mistyped would go unnoticed.
    constexpr std::array<std::string_view, 4> kWords{"IMAGE", "IMAGECLEAR", "PASTEOK", "CUTOK"};
    const std::string_view word = std::string_view(value).substr(0, value.find(' '));
    options.commands.push_back(value);
    return std::any_of(kWords.begin(), kWords.end(),
                       [&](std::string_view known) { return equalsInUpperCase(word, known); });
}

template <auto member>
bool setText(HostOptions& options, const std::string& value) {
    options.*member = value;
    return true;
}

template <auto member>
bool setFlag(HostOptions& options, const std::string&) {
    options.*member = true;
    return true;
}

struct Option {
    std::string_view name;
    std::string_view value;  // its placeholder in the help text; empty for a flag
    std::string_view needs;
    std::string_view help;
    std::string_view example;
    bool (*set)(HostOptions&, const std::string&);

    constexpr bool repeats() const { return set == addCommand; }
};

constexpr std::array kOptions{
    Option{"--connect", "HOST:PORT", "a name or address and a port from 1 to 65535",
           "hold a session with a telnet server", "--connect [::1]:2323", setAddress},
    Option{"--raw", "", "", "with --connect: a bare connection, without telnet",
           "--connect 127.0.0.1:2323 --raw", setFlag<&HostOptions::raw>},
    Option{"--term", "NAME", "a terminal type of at most 40 printable characters",
           "with --connect: the terminal type to tell the server", "--connect 127.0.0.1:23 --term ansi",
           setTerminalType},
    Option{"--charset", "NAME", "one of utf-8, 437 and 1252",
           "with --connect: the server's characters (utf-8)", "--connect 127.0.0.1:23 --charset 437",
           setCharset},
    Option{"--exact-colours", "", "", "with --connect: leave colour resets as they come",
           "--connect 127.0.0.1:2323 --exact-colours", setFlag<&HostOptions::exactColours>},
    Option{"--paint-all", "", "", "paint all of a flood, not 30 screens a second", "--paint-all",
           setFlag<&HostOptions::paintAll>},
    Option{"--close-on-exit", "", "", "end with the session, for scripts",
           "--connect 127.0.0.1:2323 --close-on-exit", setFlag<&HostOptions::closeOnExit>},
    Option{"--play", "FILE", "a file name", "show a recorded byte stream", "--play session.bin", setPlayFile},
    Option{"--rate", "BYTES", "a number from 1 to 1000000000", "with --play: at most so many bytes a second",
           "--play session.bin --rate 960", setRate},
    Option{"--size", "COLSxROWS", "two numbers from 1 to 1024, such as 132x43",
           "the screen's size in characters", "--size 132x43", setSize},
    Option{"--ini", "FILE", "a file name", "the settings file for fonts and function keys",
           "--ini C:\\terminal.ini", setText<&HostOptions::iniFile>},
    Option{"--profile", "NAME", "a name", "the name of the connection profile", "--profile office",
           setText<&HostOptions::profile>},
    Option{"--log", "FILE", "a file name", "write down everything sent and received", "--log session.log",
           setText<&HostOptions::logFile>},
    Option{"--record", "FILE", "a file name", "record the session, with its times, for --play",
           "--connect 127.0.0.1:2323 --record shell.rec", setText<&HostOptions::recordFile>},
    Option{"--snapshot", "FILE", "a file name that ends in .png or .txt",
           "keep the window's picture or its text, then end", "--snapshot window.png", setSnapshot},
    Option{"--after", "MILLISECONDS", "a number of milliseconds", "with --snapshot: when (2000 if not given)",
           "--snapshot window.png --after 5000", setAfter},
    Option{"--every", "MILLISECONDS", "a number of milliseconds from 1",
           "with --snapshot: again and again, and go on", "--snapshot screen.txt --every 500", setEvery},
    Option{"--type", "TEXT", "a text with no other escapes than \\r \\n \\t \\e \\\\ \\xHH",
           "type a text once the session is open", "--connect 127.0.0.1:2323 --type ls\\r", setTypedText},
    Option{"--command", "TEXT", "a text command (IMAGE, IMAGECLEAR, PASTEOK or CUTOK)",
           "carry out a text command at the start (repeatable)", "--command \"PASTEOK 0\"", addCommand},
    Option{"--library", "PATH", "a file name", "load the terminal straight from this DLL",
           "--library C:\\terminal\\kavrelon.dll", setText<&HostOptions::libraryFile>},
    Option{"--registered", "", "", "use the terminal that is registered on this machine", "--registered",
           setFlag<&HostOptions::registered>},
    Option{"--help-viewer", "FILE", "a file name", "show an HTML document in a label instead of a terminal",
           "--help-viewer help.html", setText<&HostOptions::helpViewerFile>},
    Option{"--help", "", "", "show this text", "--help", setFlag<&HostOptions::help>},
};

struct Rule {
    std::string_view option;
    std::string_view other;
    bool together;  // the first needs the second; otherwise the two exclude each other
};

constexpr std::array kRules{
    Rule{"--help-viewer", "--play", false},
    Rule{"--help-viewer", "--connect", false},
    Rule{"--help-viewer", "--type", false},
    Rule{"--help-viewer", "--size", false},
    Rule{"--help-viewer", "--ini", false},
    Rule{"--help-viewer", "--profile", false},
    Rule{"--help-viewer", "--log", false},
    Rule{"--help-viewer", "--command", false},
    Rule{"--help-viewer", "--record", false},
    Rule{"--help-viewer", "--paint-all", false},
    Rule{"--help-viewer", "--close-on-exit", false},
    Rule{"--charset", "--connect", true},
    Rule{"--exact-colours", "--connect", true},
    Rule{"--play", "--connect", false},
    Rule{"--library", "--registered", false},
    Rule{"--raw", "--connect", true},
    Rule{"--term", "--connect", true},
    Rule{"--term", "--raw", false},
    Rule{"--rate", "--play", true},
    Rule{"--after", "--snapshot", true},
    Rule{"--every", "--snapshot", true},
    Rule{"--help-viewer", "--every", false},
};

const Option& findOption(const std::string& name) {
    const auto found =
        std::find_if(kOptions.begin(), kOptions.end(), [&](const Option& o) { return o.name == name; });
    if (found == kOptions.end()) {
        throw HostOptionsError("There is no option " + name + "; --help lists those there are.");
    }
    return *found;
}

void apply(const Option& option, const std::string& value, HostOptions& options) {
    if ((value.empty() && !option.value.empty()) || !option.set(options, value)) {
        throw HostOptionsError(std::string(option.name) + " needs " + std::string(option.needs) + ", not \"" +
                               value + "\".");
    }
}

void checkRules(const std::set<std::string_view>& given) {
    for (const Rule& rule : kRules) {
        if (!given.contains(rule.option) || given.contains(rule.other) == rule.together) continue;
        throw HostOptionsError(std::string(rule.option) +
                               (rule.together ? " makes sense only with " : " cannot be used with ") +
                               std::string(rule.other) + ".");
    }
}

}  // namespace

HostOptions HostOptions::parse(std::span<const std::string> arguments) {
    HostOptions options;
    std::set<std::string_view> given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        const std::size_t equals = argument.starts_with("--") ? argument.find('=') : std::string::npos;
        const Option& option = findOption(argument.substr(0, equals));
        const std::string name(option.name);
        if (!given.insert(option.name).second && !option.repeats())
            throw HostOptionsError(name + " is given twice.");
        if (option.value.empty()) {
            if (equals != std::string::npos) throw HostOptionsError(name + " takes no value.");
            apply(option, "", options);
        } else if (equals != std::string::npos) {
            apply(option, argument.substr(equals + 1), options);
        } else if (i + 1 < arguments.size() && !arguments[i + 1].starts_with("--")) {
            apply(option, arguments[++i], options);
        } else {
            throw HostOptionsError(name + " needs " + std::string(option.needs) + " behind it.");
        }
        if (options.help) return options;
    }
    checkRules(given);
    if (options.helpViewerFile && options.snapshotIsText())
        throw HostOptionsError("--help-viewer cannot be used with --snapshot of a text.");
    return options;
}

bool HostOptions::snapshotIsText() const {
    return snapshotFile && hasExtension(*snapshotFile, ".TXT");
}

bool HostOptions::forScripts(std::span<const std::string> arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument.starts_with("--snapshot") || argument == "--close-on-exit";
    });
}

std::string HostOptions::sessionName() const {
    if (profile) return *profile;
    if (source == Source::Connect) return host + ':' + std::to_string(port);
    if (source == Source::Play) return playFile.substr(playFile.find_last_of("\\/") + 1);
    return "Demo";
}

std::string HostOptions::helpText() {
    std::ostringstream text;
    text << "samplehost [options]: a terminal session with the kavrelon terminal window.\n"
            "Without --connect and --play it shows the built-in demo session.\n\n";
    for (const Option& option : kOptions) {
        std::string name = "  " + std::string(option.name);
        if (!option.value.empty()) name += " " + std::string(option.value);
        name.resize(std::max<std::size_t>(name.size() + 1, 25), ' ');
        text << name << option.help << '\n'
             << std::string(25, ' ') << "samplehost " << option.example << '\n';
    }
    return text.str();
}

}  // namespace kavrelon
