#include "samplehost/Charset.h"

#include <gtest/gtest.h>

namespace kavrelon {
namespace {

/// What the terminal gets of a stream that comes in two blocks.
std::string shown(Charset charset, std::string_view sent, std::size_t cut) {
    CharsetDecoder decoder(charset);
    std::string out;
    decoder.decode(sent.substr(0, cut), out);
    decoder.decode(sent.substr(cut), out);
    return out;
}

TEST(Charset, ShowsWhatTheTerminalHasWhateverTheBlocks) {
    const struct {
        Charset charset;
        std::string_view sent, shown;
    } cases[] = {
        {Charset::Utf8, "a\x1B[1m\r\n\x7F", "a\x1B[1m\r\n\x7F"},
        {Charset::Utf8, "\u00E9\u250C\u2588\u00A0\u03C0", "\x82\xDA\xDB\xFF\xE3"},
        {Charset::Utf8, "\u20AC|\u2190|\u0085|", "?|?|?|"},
        {Charset::Utf8, "e\u0301|\u65E5\u672C|\uFE30\U0001F600|\uFEFF\U000E0100", "e|????|????|"},
        // What is no character: too short, too long, a surrogate, beyond the last, no beginning.
        {Charset::Utf8, "\xC3(\xE2\x94(\xF0\x9F\x98(", "?(?(?("},
        {Charset::Utf8, "\xE2\x94\xC3\xA9\xE2\x1B[H", "?\x82?\x1B[H"},
        {Charset::Utf8, "\xC0\xAF\xE0\x80\xAFz", "?????z"},
        {Charset::Utf8, "\xED\xA0\x80\xF4\x90\x80\x80\xFF\x80z", "?????????z"},
        {Charset::CodePage437, "\xC9\x82\xFF", "\xC9\x82\xFF"},
        {Charset::Windows1252, "\xE9\xC4\x80\x83\x81\xA0z", "\x82\x8E?\x9F?\xFFz"},
    };
    for (const auto& [charset, sent, wanted] : cases) {
        for (std::size_t cut = 0; cut < sent.size(); ++cut)
            EXPECT_EQ(shown(charset, sent, cut), wanted) << testing::PrintToString(sent) << ", " << cut;
    }
}

TEST(Charset, SendsWhatTheRemoteSystemHas) {
    const struct {
        std::u16string_view typed;
        std::string_view utf8, codePage437, windows1252;
    } cases[] = {
        {u"a\r\x1B\x7F", "a\r\x1B\x7F", "a\r\x1B\x7F", "a\r\x1B\x7F"},
        {u"\u00E9\u00FF", "\xC3\xA9\xC3\xBF", "\x82\x98", "\xE9\xFF"},
        {u"\u20AC\u2019", "\u20AC\u2019", "??", "\x80\x92"},
        {u"\u2502", "\u2502", "\xB3", "?"},
        {u"\U00010000\U0001F600|\xD83D|\xDE00", "\U00010000\U0001F600|?|?", "??|?|?", "??|?|?"},
    };
    for (const auto& [typed, utf8, codePage437, windows1252] : cases) {
        EXPECT_EQ(encode(typed, Charset::Utf8), utf8);
        EXPECT_EQ(encode(typed, Charset::CodePage437), codePage437);
        EXPECT_EQ(encode(typed, Charset::Windows1252), windows1252);
    }
}

}  // namespace
}  // namespace kavrelon
