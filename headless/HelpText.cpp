#include "headless/HelpText.h"

#include <algorithm>
#include <array>
#include <random>
#include <string_view>

namespace kavrelon {
namespace {

constexpr std::string_view kHead =
    "<HTML>\r\n<HEAD><TITLE>Entering orders</TITLE></HEAD>\r\n"
    "<BODY BGCOLOR=\"#FFFFFF\" TEXT=\"#000000\" LINK=\"navy\">\r\n";
constexpr std::string_view kTail = "</BODY>\r\n</HTML>\r\n";

constexpr std::array kSentences{
    "Press F3 to leave the form without keeping what was typed.",
    "The number of the order stands in the first field and cannot be changed.",
    "Prices are in the currency of the customer, at the rate of the day.",
    "An order that has been shipped can be seen here but no longer changed.",
    "The cursor goes to the next field when the field is full.",
    "Leave the date empty for an order that is to be shipped as soon as possible.",
    "Only the branch that took the order may cancel it.",
    "The list shows the newest entry first, twenty to a page.",
    "A line of the order is taken out by setting its quantity to nothing.",
    "Totals are worked out again whenever a line changes.",
    "The message line at the foot of the screen says what is wrong.",
    "Ask your supervisor when the amount is above the limit of the desk.",
    "Stock is counted at night, so that the figures here may be a day old.",
    "The customer gets a copy of every change by post.",
};
constexpr std::array kTitles{"Orders",    "Customers", "Prices and terms", "Returned goods",
                             "Enquiries", "Printing",  "End of the day"};
constexpr std::array kTerms{"quantity", "order number", "credit limit", "due date", "discount", "ship to"};

/// Writes the parts of a help text one after the other.
class HelpWriter {
  public:
    /// The next part, of 60 to 700 characters.
    std::string part() {
        ++parts_;
        switch (parts_ % 10) {
            case 1:
                return heading();
            case 3:
                return list("UL", "See also ");
            case 4:
                return note();
            case 6:
                return table();
            case 8:
                return list("OL", "First ");
            default:
                return paragraph(parts_ % 10 == 5 ? "<P ALIGN=\"center\">" : "<P>");
        }
    }
    std::string sentence() { return pick(kSentences); }

  private:
    /// The same on every machine: the standard fixes the generator, not the distributions.
    std::size_t number(std::size_t below) { return generator_() % below; }
    template <std::size_t kCount>
    std::string pick(const std::array<const char*, kCount>& texts) {
        return texts[number(kCount)];
    }

    std::string heading() {
        const std::string count = std::to_string(parts_ / 10 + 1);
        return "<H2><A NAME=\"s" + count + "\">" + count + ".&nbsp;" + pick(kTitles) + "</A></H2>\r\n";
    }

    std::string paragraph(std::string_view opener) {
        std::string text(opener);
        text += sentence() + " The <B>" + pick(kTerms) + "</B> must be &gt;&nbsp;0. " + sentence() + "\r\n";
        text += sentence() + " <FONT COLOR=\"red\" SIZE=\"-1\">Note:</FONT> <I>" + sentence() + "</I>\r\n";
        text += sentence() + " Go to <A HREF=\"#s" + std::to_string(number(9) + 1) + "\" TITLE=\"" +
                pick(kTitles) + "\">" + pick(kTitles) + "</A>.<BR>\r\n" + sentence();
        return text + "</P>\r\n";
    }

    std::string list(const std::string& tag, std::string_view lead) {
        std::string text = "<" + tag + ">\r\n";
        for (std::size_t items = 3 + number(3); items > 0; --items) {
            text += "<LI>";
            text += lead;
            text += "<B>" + pick(kTerms) + "</B>: " + sentence() + "\r\n";
        }
        return text + "</" + tag + ">\r\n";
    }

    std::string note() {
        return "<BLOCKQUOTE><IMG SRC=\"note.gif\" ALT=\"Note\" WIDTH=16 HEIGHT=16> <SMALL>" + sentence() +
               " Caf&eacute; &copy; 10&#176;.</SMALL></BLOCKQUOTE>\r\n<!-- " + pick(kTitles) +
               " -->\r\n<HR>\r\n";
    }

    std::string table() {
        std::string text =
            "<TABLE BORDER=1 WIDTH=\"80%\" CELLPADDING=3>\r\n<TR><TH>Field</TH><TH>Meaning</TH></TR>\r\n";
        for (std::size_t rows = 2 + number(3); rows > 0; --rows) {
            text += "<TR><TD WIDTH=\"25%\" BGCOLOR=\"#E0E0E0\">" + pick(kTerms) + "</TD><TD>" + sentence() +
                    "</TD></TR>\r\n";
        }
        return text + "</TABLE>\r\n";
    }

    std::mt19937 generator_{2024};
    std::size_t parts_ = 0;
};

}  // namespace

std::string helpText(std::size_t length) {
    HelpWriter writer;
    std::string text(kHead);
    const std::size_t most = length - std::min(length, kTail.size());
    for (std::string part = writer.part(); text.size() + part.size() <= most; part = writer.part())
        text += part;
    while (text.size() < most) text += writer.sentence() + ' ';
    text.resize(most);
    return text += kTail;
}

}  // namespace kavrelon
