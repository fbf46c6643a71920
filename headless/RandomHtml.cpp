#include "headless/RandomHtml.h"

#include <array>
#include <random>
#include <string_view>

namespace kavrelon {
namespace {

class Writer {
  public:
    explicit Writer(unsigned seed) : random_(seed) {}

    std::string document() {
        while (words_ < kMostWords) block(0);
        return std::move(text_);
    }

  private:
    static constexpr int kMostWords = 150;
    static constexpr int kDeepest = 4;

    // The standard fixes the generator's numbers, not those of its distributions.
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    template <std::size_t kCount>
    void oneOf(const std::array<std::string_view, kCount>& pieces) {
        text_ += pieces[random_() % kCount];
    }

    void word() {
        text_ += std::string(static_cast<std::size_t>(1 + below(7)), static_cast<char>('a' + words_++ % 26));
    }

    void words(int most) {
        static constexpr std::array<std::string_view, 8> kBetween{
            " ", " ", " ", " ", "  ", "&nbsp;", "&nbsp;&nbsp;", ""};
        oneOf(std::array<std::string_view, 3>{"", " ", "&nbsp;"});
        for (int left = 1 + below(most); left > 0; --left) {
            word();
            if (left > 1 || below(2) == 0) oneOf(kBetween);
        }
    }

    void styled(int depth) {
        static constexpr std::array<std::string_view, 8> kOpeners{
            "<B>", "<U>", "<I>", "<FONT SIZE=6 COLOR=red>", "<BIG>", "<SUP>", "<SUB>", "<FONT SIZE=-2>"};
        static constexpr std::array<std::string_view, 8> kClosers{"</B>",   "</U>",   "</I>",   "</FONT>",
                                                                  "</BIG>", "</SUP>", "</SUB>", "</FONT>"};
        const auto style = random_() % kOpeners.size();
        text_ += kOpeners[style];
        line(depth + 1, false);
        text_ += kClosers[style];
    }

    /// Text with its styles; `free` is outside of links, where everything may stand.
    void line(int depth, bool free) {
        for (int left = 1 + below(3); left > 0; --left) {
            const int kind = below(free ? 9 : 6);
            if (kind < 4 || depth > kDeepest) {
                words(6);
            } else if (kind < 6) {
                styled(depth);
                oneOf(std::array<std::string_view, 2>{"", " "});
            } else if (kind == 6) {
                text_ += "<A HREF=x>";
                line(depth + 1, false);
                text_ += "</A>";
            } else if (kind == 7) {
                picture();
            } else {
                oneOf(std::array<std::string_view, 3>{"<BR>", "<BR CLEAR=ALL>", "<BR CLEAR=LEFT>"});
            }
        }
    }

    void picture() {
        oneOf(std::array<std::string_view, 5>{"<IMG", "<IMG ALIGN=LEFT", "<IMG ALIGN=RIGHT",
                                              "<IMG ALIGN=CENTER", "<IMG ALIGN=LEFT HSPACE=9"});
        text_ += " ALT=p WIDTH=" + std::to_string(below(90)) + " HEIGHT=" + std::to_string(below(60)) + ">";
    }

    void list(int depth) {
        const bool numbered = below(2) == 0;
        text_ += numbered ? "<OL>" : "<UL>";
        for (int left = 1 + below(4); left > 0; --left) {
            text_ += "<LI>";
            if (below(4) > 0) line(depth, true);
            if (below(3) == 0) block(depth + 1);
        }
        text_ += numbered ? "</OL>" : "</UL>";
    }

    void table(int depth) {
        oneOf(std::array<std::string_view, 6>{
            "<TABLE>", "<TABLE BORDER=2>", "<TABLE ALIGN=LEFT>", "<TABLE ALIGN=RIGHT BORDER=1>",
            "<TABLE WIDTH=\"100%\" HEIGHT=\"40%\">", "<TABLE WIDTH=90 CELLSPACING=0 CELLPADDING=0>"});
        for (int rows = 1 + below(3); rows > 0; --rows) {
            text_ += "<TR>";
            for (int cells = 1 + below(3); cells > 0; --cells) {
                oneOf(std::array<std::string_view, 8>{"<TD>", "<TD>", "<TH>", "<TD COLSPAN=2>",
                                                      "<TD WIDTH=\"60%\">", "<TD WIDTH=30 VALIGN=BOTTOM>",
                                                      "<TD NOWRAP=1 HEIGHT=30>",
                                                      "<TD ALIGN=RIGHT HEIGHT=\"20%\">"});
                line(depth, true);
                if (below(4) == 0) block(depth + 1);
                text_ += "</TD>";
            }
            text_ += "</TR>";
        }
        text_ += "</TABLE>";
    }

    void block(int depth) {
        const int kind = below(9);
        if (depth > kDeepest || kind < 2) {
            text_ += "<P>";
            line(depth, true);
            text_ += "</P>";
        } else if (kind == 2) {
            text_ += "<BLOCKQUOTE>";
            line(depth, true);
            block(depth + 1);
            text_ += "</BLOCKQUOTE>";
        } else if (kind == 3) {
            oneOf(std::array<std::string_view, 3>{"<HR>", "<HR WIDTH=50 SIZE=5>", "<LI>"});
            line(depth, true);
        } else if (kind == 4) {
            text_ += "<CENTER>";
            block(depth + 1);
            text_ += "</CENTER>";
        } else if (kind < 7) {
            list(depth);
        } else if (kind == 7) {
            table(depth + 1);
        } else {
            line(depth, true);
        }
    }

    std::mt19937 random_;
    std::string text_;
    int words_ = 0;
};

}  // namespace

std::string randomHtml(unsigned seed) {
    return Writer(seed).document();
}

}  // namespace kavrelon
