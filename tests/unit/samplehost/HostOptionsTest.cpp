#include "samplehost/HostOptions.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace kavrelon {
namespace {

using Source = HostOptions::Source;

HostOptions parse(const std::vector<std::string>& arguments) {
    return HostOptions::parse(arguments);
}

std::string errorOf(const std::vector<std::string>& arguments) {
    try {
        parse(arguments);
    } catch (const HostOptionsError& error) {
        return error.what();
    }
    return "none";
}

TEST(HostOptions, ReadsEveryOption) {
    const HostOptions demo = parse({});
    EXPECT_EQ(demo.source, Source::Demo);
    EXPECT_FALSE(demo.raw || demo.registered || demo.help || demo.rate || demo.logFile || demo.columns != 0);

    const HostOptions connect = parse({"--connect", "[::1]:2323", "--term=vt", "--size", "132x43", "--ini",
                                       "a b.ini", "--profile=x=y", "--registered", "--log", "l"});
    EXPECT_EQ(connect.source, Source::Connect);
    EXPECT_EQ(connect.host + '|' + std::to_string(connect.port), "::1|2323");
    EXPECT_EQ(connect.terminalType, "vt");
    EXPECT_EQ(std::pair(connect.columns, connect.lines), std::pair(132, 43));
    EXPECT_EQ(connect.iniFile, "a b.ini");
    EXPECT_EQ(connect.profile, "x=y");
    EXPECT_EQ(connect.logFile, "l");
    EXPECT_TRUE(connect.registered);

    const HostOptions play =
        parse({"--snapshot", "w.PNG", "--play", "f", "--rate", "960", "--after", "0", "--library", "k.dll"});
    EXPECT_EQ(play.source, Source::Play);
    EXPECT_EQ(play.playFile, "f");
    EXPECT_EQ(play.rate, 960U);
    EXPECT_EQ(play.snapshotFile, "w.PNG");
    EXPECT_EQ(play.snapshotAfter, 0U);
    EXPECT_EQ(play.libraryFile, "k.dll");
    EXPECT_EQ(parse({"--type", R"(ls\r\n\t\e\\\x41\x00z)"}).typedText, std::string("ls\r\n\t\x1B\\A\0z", 10));
    EXPECT_TRUE(parse({"--raw", "--connect", "box:1"}).raw);
    EXPECT_TRUE(parse({"--raw", "--help", "nonsense"}).help);
}

TEST(HostOptions, TellsWhatIsWrong) {
    const struct {
        std::vector<std::string> arguments;
        std::string told;
    } cases[] = {
        {{"--nonsense"}, "--nonsense"},
        {{"--connect"}, "--connect needs"},
        {{"--connect", "host"}, "--connect needs"},
        {{"--connect", ":23"}, "--connect needs"},
        {{"--connect", "host:0"}, "--connect needs"},
        {{"--connect", "host:65536"}, "--connect needs"},
        {{"--connect", "::1:23"}, "--connect needs"},
        {{"--play", "--rate", "3"}, "--play needs"},
        {{"--play", "f", "--rate", "0"}, "--rate needs"},
        {{"--play", "f", "--rate", "12k"}, "--rate needs"},
        {{"--play="}, "--play needs"},
        {{"--size", "80"}, "--size needs"},
        {{"--size", "0x25"}, "--size needs"},
        {{"--size", "80x1025"}, "--size needs"},
        {{"--snapshot", "w.bmp"}, "--snapshot needs"},
        {{"--snapshot", "w.png", "--after", "-1"}, "--after needs"},
        {{"--connect", "h:1", "--term", "a b"}, "--term needs"},
        {{"--type", "a\\"}, "--type needs"},
        {{"--type", "\\x1"}, "--type needs"},
        {{"--type", "\\x1g"}, "--type needs"},
        {{"--raw=1", "--connect", "h:1"}, "--raw takes no value"},
        {{"--ini", "a", "--ini", "b"}, "--ini is given twice"},
        {{"--registered", "--library", "k"}, "--library cannot be used with --registered"},
        {{"--term", "x", "--raw", "--connect", "h:1"}, "--term cannot be used with --raw"},
        {{"--log", "l", "--help-viewer", "f"}, "--help-viewer cannot be used with --log"},
        {{"--raw"}, "--raw makes sense only with --connect"},
        {{"--rate", "1"}, "--rate makes sense only with --play"},
    };
    for (const auto& [arguments, told] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const std::string error = errorOf(arguments);
        EXPECT_NE(error.find(told), std::string::npos) << error;
        EXPECT_TRUE(error.ends_with(".")) << error;
    }
}

TEST(HostOptions, HelpShowsExamplesThatWork) {
    std::istringstream help(HostOptions::helpText());
    int examples = 0;
    for (std::string line; std::getline(help, line);) {
        EXPECT_LE(line.size(), 79U) << line;
        const std::size_t example = line.find("  samplehost ");
        if (example == std::string::npos) continue;
        std::istringstream words(line.substr(example));
        std::vector<std::string> arguments;
        for (std::string word; words >> word;) arguments.push_back(word);
        arguments.erase(arguments.begin());
        EXPECT_EQ(errorOf(arguments), "none") << line;
        ++examples;
    }
    EXPECT_EQ(examples, 16);
}

}  // namespace
}  // namespace kavrelon
