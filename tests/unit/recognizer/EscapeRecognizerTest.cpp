#include "recognizer/EscapeRecognizer.h"

#include <gmock/gmock.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "headless/HeadlessSession.h"
#include "support/Bytes.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::ThrowsMessage;
using Bytes = std::span<const std::uint8_t>;

/// Writes down a stream as one line: plain bytes as they are, sequences as {row|field|field}, dropped bytes
/// as ~bytes~.
class Recorder : public EscapeSink {
  public:
    void plain(Bytes bytes) override { line.append(bytes.begin(), bytes.end()); }
    void sequence(std::int16_t index, std::span<const std::string_view> fields) override {
        line += "{" + std::to_string(index);
        for (const std::string_view field : fields) line.append("|").append(field);
        line += "}";
    }
    void unmatched(Bytes bytes) override { line += "~" + std::string(bytes.begin(), bytes.end()) + "~"; }

    std::string line;
};

/// What a stream becomes when it comes in blocks of this length.
std::string recognise(const EscapeTree& tree, std::string_view stream, std::size_t block) {
    Recorder recorder;
    EscapeRecognizer recognizer(tree, recorder);
    for (std::size_t i = 0; i < stream.size(); i += block) recognizer.feed(bytesOf(stream.substr(i, block)));
    return recorder.line;
}

/// A case is a stream and what it becomes, whatever the blocks that it comes in.
void expectCases(const EscapeTree& tree, const std::vector<std::pair<std::string, std::string>>& cases) {
    for (const auto& [stream, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(stream));
        for (std::size_t block = 1; block <= stream.size(); ++block)
            EXPECT_EQ(recognise(tree, stream, block), expected) << block;
    }
}

TEST(EscapeRecognizer, FindsTheRowsOfTheTable) {
    expectCases(HeadlessSession::escapeTree(),
                {
                    {"\033[12;34H\033[5A\033[A", "{2|12|34}{3|5}{4}"},
                    {"\033[1;2f\033D\033M\033Hx", "{11|1|2}{14}{15}{16}x"},
                    {"\033[3g\033[0K\033[K\033[2J\033[1i", "{18}{20}{19}{26}{28}"},
                    {"\033[31m\033[1;32;40m\033[1;m\033[0;1;;7m", "{30|31}{31|1|32;40}{31|1|}{31|0|1;;7}"},
                    {"\033[13;\"say \"hi\"\"p", "{29|13|say \"hi\"}"},
                    {"\033\bL0\r\n\nx\033\bL1\nx\033\bL1 who\r x", "{32}\nx{33}x{34|who} x"},
                    {"\033\bSIZE 132,25\0x\033\bNS\r\033\bCS\r\n"s, "{35|132|25}x{36}{37}"},
                    {"\033\bFKEY SA2;list; all<cr>\r\n", "{38|SA2|list; all<cr>}"},
                    {"\037HELPBOX 3 1,2,30,4 <B>a, b</B>\xFE\r\n\037", "{39|3|1|2|30|4|<B>a, b</B>\xFE\r\n}"},
                    {"\037HELPBOX 3 HIDE\037\037HELPBOX 12 HIDE\037", "{40|3}{40|12}"},
                    {"\037KB http://a/,one, two\037\037KB Clear\037", "{41|http://a/|one, two}{42}"},
                    {"\037REMOTE [\"c:\\a[1].exe\" x] \"An \"odd\" one\"\037\037REMOTE CLEAR\037",
                     "{43|\"c:\\a[1].exe\" x|An \"odd\" one}{44}"},
                });
}

TEST(EscapeRecognizer, DropsWhatMatchesNoRow) {
    expectCases(HeadlessSession::escapeTree(),
                {
                    {"a\033[?2004hb\033[mc", "a~\033[?2004h~b~\033[m~c"},
                    {"\033[>4;2m\033[;H\033[1 qx", "~\033[>4;2m~~\033[;H~~\033[1 q~x"},
                    {"\033(B\0337\033=x", "~\033(B~~\0337~~\033=~x"},
                    {"\033]0;title\ax\033]0;t\033\\y", "~\033]0;title\a~x~\033]0;t\033\\~y"},
                    {"\033Pq#0\033\\x\033_a\033[Hx", "~\033Pq#0\033\\~x~\033_a~{1}x"},
                    {"\033\bL2\r\nx\033\bSIZE a,b\nx", "~\033\bL2\r~x~\033\bSIZE a,b\n~x"},
                    {"\037KB none\037x\037HELPBOX a\037x", "~\037KB none\037~x~\037HELPBOX a\037~x"},
                    {"a\037b\037\037KB c", "a\037b\037"},
                });
}

TEST(EscapeRecognizer, LimitsTheDamageOfBrokenSequences) {
    expectCases(HeadlessSession::escapeTree(),
                {
                    {"\033[1\033[Hx", "~\033[1~{1}x"},
                    {"\033[1\030x\033]0;\032y", "~\033[1\030~x~\033]0;\032~y"},
                    {"\033[1\xC4x\033\177", "~\033[1~\xC4x~\033~\177"},
                    {"\033[1\r\n;2H\033\aM", "\r\n{2|1|2}\a{15}"},
                    {"\033[1;\"d m\r\nx", "~\033[1;\"d~ m\r\nx"},
                    {"\033[62;\"px\n", "~\033[62;\"p~x\n"},
                    {"\037KB a\033[H\037KB b\037KB Clear\037", "~\037KB a~{1}~\037KB b\037~KB Clear"},
                    {"\033\bFKEY 1;a\037KB Clear\037", "~\033\bFKEY 1;a~{42}"},
                });
}

TEST(EscapeRecognizer, TakesAnyTable) {
    const EscapeTree tree(std::vector<std::string>{"<ESC>A", "", "<ESC>AB{N}C", "<27>[{x}q", "<27>[{N}q",
                                                   "<27>[5q", "#{X}--!", "<ESC>]8;{X}<27>\\", "<300",
                                                   "{a<27>", "<27>Z{x}<27>\\", "<ESC>[{N} {X}z", "<ESC>Q<13>",
                                                   "<27>Y{X}c{X}b", "<27>Y{X}a{X}b", "<27>[!"});
    expectCases(tree, {
                          {"\033Ax\033AB12C\033AB1x", "{1}x{3|12}{1}B1x"},
                          {"\033[q\033[?1q\033[6q\033[5q", "{4|}{4|?1}{5|6}{6}"},
                          {"#a---b--!#\n--!", "{7|a---b}{7|\n}"},
                          {"\033]8;u\033\\\033]8;u\033[1q\033]9\033\\", "{8|u}~\033]8;u~{5|1}~\033]9\033\\~"},
                          {"<300{a\033{{b", "{9}{10}{{b"},
                          {"\033Zab\033\\\033Zab\033[5q", "{11|ab}~\033Z~ab{6}"},
                          {"\033[1 2z\033[1!z", "{12|1|2}~\033[1!z~"},
                          {"\033Q\r\n\033Ycab\033[!!8H", "{13}\n{14||a}{16}!8H"},
                      });
    EXPECT_EQ(recognise(EscapeTree({}), "a\037\033[Hb", 6), "a\037~\033[H~b");
}

TEST(EscapeRecognizer, NamesMalformedPatterns) {
    for (const char* pattern :
         {"{N}x", "<ESC>[{N}", "<ESC>{N}{X}x", "<ESC>{n}5", "<ESC><term>x", "<TERM>", "<256>"}) {
        const auto make = [&] { EscapeTree(std::vector<std::string>{"<ESC>A", pattern}); };
        EXPECT_THAT(make,
                    ThrowsMessage<std::invalid_argument>(AllOf(HasSubstr("Row 2"), HasSubstr(pattern))));
    }
}

TEST(EscapeRecognizer, GivesUpWhatNeverEnds) {
    constexpr std::size_t limit = EscapeRecognizer::kLongestSequence;
    const std::string quoted = "\033[1;\"d";
    for (const std::string start : {"\033]", "\033[", "\037KB ", "\033\b", quoted.c_str()}) {
        const std::string ones(limit - start.size(), '1');
        // Of a quoted text that does not end only the start is dropped, which is a sequence of its own.
        const std::string givenUp = start == quoted ? "~" + start + "~" + ones : "~" + start + ones + "~";
        for (const std::size_t block : {std::size_t{1}, std::size_t{1000}, 3 * limit}) {
            EXPECT_TRUE(recognise(HeadlessSession::escapeTree(), quoted + "\n" + start + ones + "text\033[H",
                                  block) == "~" + quoted + "~\n" + givenUp + "text{1}")
                << start << block;
        }
    }
}

TEST(EscapeRecognizer, ResetForgetsAnUnfinishedSequence) {
    Recorder recorder;
    EscapeRecognizer recognizer(HeadlessSession::escapeTree(), recorder);
    recognizer.feed(bytesOf("\033[1"));
    recognizer.reset();
    recognizer.feed(bytesOf("2H\033\bL0\r"));
    recognizer.reset();
    recognizer.feed(bytesOf("\n"));
    EXPECT_EQ(recorder.line, "2H{32}\n");
}

TEST(EscapeRecognizer, FindsTheSameWhateverTheBlocks) {
    const EscapeTree& tree = HeadlessSession::escapeTree();
    std::mt19937 random(20);
    const std::vector<std::string> pieces{
        "\033", "[", "1", ";",  "H",  "m", "\"", "p",    "\b",   "L1 ", "\r", "\n",          "KB ",
        "\037", ",", "]", "\\", "\a", "x", " ",  "\030", "\xC4", "?",   "K",  "\033\bFKEY ", "\037REMOTE [",
        "\0"s};
    for (int round = 0; round < 2000; ++round) {
        std::string stream;
        for (int i = 0; i < 30; ++i) stream += pieces[random() % pieces.size()];
        const std::string whole = recognise(tree, stream, stream.size());
        for (const std::size_t block : {1U, 2U, 3U, 5U, 7U})
            ASSERT_EQ(recognise(tree, stream, block), whole) << testing::PrintToString(stream);
    }
}

}  // namespace
}  // namespace kavrelon
