#include "samplehost/HostOptions.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

namespace kavrelon {
namespace {

using Source = HostOptions::Source;

/// Of arguments as the help shows them, with spaces between them, and quotes around one with spaces in it.
HostOptions parse(const std::string& line) {
    std::istringstream words(line);
    std::vector<std::string> arguments;
    for (std::string word; words >> std::quoted(word);) arguments.push_back(word);
    return HostOptions::parse(arguments);
}

std::string errorOf(const std::string& line) {
    try {
        parse(line);
    } catch (const HostOptionsError& error) {
        return error.what();
    }
    return "none";
}

TEST(HostOptions, ReadsEveryOption) {
    const HostOptions demo = parse("");
    EXPECT_EQ(demo.source, Source::Demo);
    EXPECT_FALSE(demo.raw || demo.registered || demo.help || demo.rate || demo.logFile || demo.columns != 0);

    const HostOptions connect =
        parse("--connect [::1]:2323 --term=vt --size 132x43 --ini a.ini --profile=x=y --registered --log l");
    EXPECT_EQ(connect.source, Source::Connect);
    EXPECT_EQ(connect.host + '|' + std::to_string(connect.port), "::1|2323");
    EXPECT_EQ(connect.terminalType, "vt");
    EXPECT_EQ(std::pair(connect.columns, connect.lines), std::pair(132, 43));
    EXPECT_EQ(connect.iniFile, "a.ini");
    EXPECT_EQ(connect.profile, "x=y");
    EXPECT_EQ(connect.logFile, "l");
    EXPECT_TRUE(connect.registered);

    const HostOptions play = parse("--snapshot w.PNG --play f --rate 960 --after 0 --library k.dll");
    EXPECT_EQ(play.source, Source::Play);
    EXPECT_EQ(play.playFile, "f");
    EXPECT_EQ(play.rate, 960U);
    EXPECT_EQ(play.snapshotFile, "w.PNG");
    EXPECT_EQ(play.snapshotAfter, 0U);
    EXPECT_FALSE(play.snapshotIsText() || play.snapshotEvery);
    const HostOptions text = parse("--snapshot a.png.Txt --every 5");
    EXPECT_TRUE(text.snapshotIsText());
    EXPECT_EQ(text.snapshotEvery, 5U);
    EXPECT_EQ(play.libraryFile, "k.dll");
    EXPECT_EQ(parse(R"(--type ls\r\n\t\e\\\x41\x00z)").typedText, std::string("ls\r\n\t\x1B\\A\0z", 10));
    EXPECT_EQ(parse(R"(--command image --size 9x9 --command "CUTOK 0")").commands,
              (std::vector<std::string>{"image", "CUTOK 0"}));
    EXPECT_TRUE(parse("--raw --connect box:1").raw);
    EXPECT_EQ(connect.charset, Charset::Utf8);
    EXPECT_FALSE(connect.exactColours || connect.paintAll || connect.closeOnExit);
    const HostOptions exact =
        parse("--connect h:1 --charset 1252 --exact-colours --paint-all --close-on-exit");
    EXPECT_EQ(exact.charset, Charset::Windows1252);
    EXPECT_TRUE(exact.exactColours && exact.paintAll && exact.closeOnExit);
    const std::pair<const char*, const char*> names[] = {{"", "Demo"},
                                                         {"--connect h:1", "h:1"},
                                                         {"--play a\\b/c.bin", "c.bin"},
                                                         {"--profile office", "office"}};
    for (const auto& [line, name] : names) EXPECT_EQ(parse(line).sessionName(), name);
    EXPECT_TRUE(parse("--raw --help nonsense").help);
    const std::pair<std::vector<std::string>, bool> scripts[] = {
        {{"--nonsense", "--snapshot=w.png"}, true}, {{"--close-on-exit"}, true}, {{"--play", "f"}, false}};
    for (const auto& [arguments, script] : scripts) EXPECT_EQ(HostOptions::forScripts(arguments), script);
}

TEST(HostOptions, TellsWhatIsWrong) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"--nonsense", {"--nonsense"}},
        {"--connect needs",
         {"--connect", "--connect host", "--connect :23", "--connect host:0", "--connect host:65536",
          "--connect ::1:23"}},
        {"--play needs", {"--play --rate 3", "--play="}},
        {"--rate needs", {"--play f --rate 0", "--play f --rate 12k"}},
        {"--size needs", {"--size 80", "--size 0x25", "--size 80x1025"}},
        {"--snapshot needs", {"--snapshot w.bmp", "--snapshot txt"}},
        {"--every needs", {"--snapshot w.png --every 0"}},
        {"--help-viewer cannot be used with --snapshot of", {"--snapshot a.txt --help-viewer f"}},
        {"--after needs", {"--snapshot w.png --after -1"}},
        {"--term needs",
         {"--connect h:1 --term a\x7F", "--connect h:1 --term=", "--connect h:1 --term \"a b\""}},
        {"--charset needs", {"--connect h:1 --charset utf8", "--connect h:1 --charset 850"}},
        {"--exact-colours makes sense only with --connect", {"--play f --exact-colours"}},
        {"--type needs", {"--type a\\", "--type \\x1", "--type \\x1g"}},
        {"--command needs",
         {"--command", "--command --help", "--command=", "--command IMAGES", "--command CUTOK1"}},
        {"--raw takes no value", {"--raw=1 --connect h:1"}},
        {"--ini is given twice", {"--ini a --ini b"}},
        {"--library cannot be used with --registered", {"--registered --library k"}},
        {"--term cannot be used with --raw", {"--term x --raw --connect h:1"}},
        {"--help-viewer cannot be used with --log", {"--log l --help-viewer f"}},
        {"--help-viewer cannot be used with --command", {"--command image --help-viewer f"}},
        {"--raw makes sense only with --connect", {"--raw"}},
        {"--rate makes sense only with --play", {"--rate 1"}},
    };
    for (const auto& [told, lines] : cases) {
        for (const std::string& line : lines) {
            const std::string error = errorOf(line);
            EXPECT_NE(error.find(told), std::string::npos) << line << ": " << error;
            EXPECT_TRUE(error.ends_with(".")) << error;
        }
    }
}

TEST(HostOptions, HelpShowsExamplesThatWork) {
    std::istringstream help(HostOptions::helpText());
    int examples = 0;
    for (std::string line; std::getline(help, line);) {
        EXPECT_LE(line.size(), 79U) << line;
        const std::size_t example = line.find("  samplehost ");
        if (example == std::string::npos) continue;
        EXPECT_EQ(errorOf(line.substr(example + std::string_view("  samplehost ").size())), "none") << line;
        ++examples;
    }
    EXPECT_EQ(examples, 23);
}

}  // namespace
}  // namespace kavrelon
