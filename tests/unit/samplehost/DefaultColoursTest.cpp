#include "samplehost/DefaultColours.h"

#include <gtest/gtest.h>

namespace kavrelon {
namespace {

TEST(DefaultColours, TakeThePlaceOfResetsWhateverTheBlocks) {
    const std::string longList = "\x1B[" + std::string(600, '0') + "m";
    const std::pair<std::string, std::string> cases[] = {
        {"a\x1B[mb", "a\x1B[37;40;0mb"},
        {"\x1B[0m\x1B[00m", "\x1B[37;40;0m\x1B[37;40;0m"},
        {"\x1B[01;31mgrep\x1B[39;49m", "\x1B[01;31mgrep\x1B[37;40m"},
        {"\x1B[;1m\x1B[1;;32m", "\x1B[37;40;0;1m\x1B[1;37;40;0;32m"},
        {"\x1B[38;5;0;0m", "\x1B[38;5;0;37;40;0m"},
        {"\x1B[48;2;0;39;49;39m\x1B[38m\x1B[38;5m", "\x1B[48;2;0;39;49;37m\x1B[38m\x1B[38;5m"},
        // What is no list of renditions, or not only one.
        {"\x1B[0K\x1B[?0m\x1B[>4;0m\x1B[4:0m\x1B[0 mm\x1B[10;39H", ""},
        {"\x1B[\r0m\x1Bm\x1B\x1B[m\x1B[3\x1B[m0m", "\x1B[\r0m\x1Bm\x1B\x1B[37;40;0m\x1B[3\x1B[37;40;0m0m"},
        {longList + "x", ""},
    };
    for (const auto& [sent, wanted] : cases) {
        for (std::size_t cut = 0; cut < sent.size(); ++cut) {
            DefaultColours colours;
            std::string out;
            colours.rewrite(std::string_view(sent).substr(0, cut), out);
            colours.rewrite(std::string_view(sent).substr(cut), out);
            EXPECT_EQ(out, wanted.empty() ? sent : wanted) << testing::PrintToString(sent) << ", " << cut;
        }
    }
}

}  // namespace
}  // namespace kavrelon
