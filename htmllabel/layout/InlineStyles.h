#pragma once

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "htmllabel/document/HTMLDocument.h"
#include "htmllabel/layout/Flow.h"
#include "htmllabel/layout/LayoutDefaults.h"
#include "htmllabel/layout/TagStack.h"

namespace kavrelon {

/// The text style at the current place of a walk over a document: B, I and U are counted, the other tags
/// nest. A combination becomes a `TextStyle` of the flow when text first asks for it.
class InlineStyles {
  public:
    InlineStyles(const HTMLDocument& document, const LayoutDefaults& defaults, Canvas& canvas, Flow& flow);

    /// Takes the opener of an inline tag or heading, or of a cell in its own scope.
    void open(const HTMLElement& tag);
    /// Takes an A and its mark. A link ends a link that is still open.
    void openAnchor(const HTMLElement& tag, std::uint32_t mark);
    /// Takes the opener's code.
    void close(TagType code);

    /// A table or a cell begins: it starts with the style around it, which closers in it do not change.
    void enterScope();
    void leaveScope();

    /// The style in force, as an index into the flow's styles.
    std::uint32_t current();
    /// The same where it underlines; else `kNone`.
    std::uint32_t underline() { return isUnderlined() ? current() : kNone; }
    const TextStyle& currentStyle() { return flow_.styles[current()]; }
    /// The mark of the innermost open A.
    std::uint32_t mark() const { return tags_.top().mark; }

  private:
    struct State {
        std::string_view face;
        float points = 10;
        Colour colour = 0;
        int rise = 0;
        std::uint32_t mark = kNone;
        bool bold = false;
        bool underline = false;
        bool isLink = false;
    };
    struct Counts {
        int bold = 0;
        int italic = 0;
        int underline = 0;
    };
    struct FontKey {
        std::string_view face;
        float points = 0;
        int flags = 0;
        bool operator==(const FontKey&) const = default;
    };
    struct HashFontKey {
        std::size_t operator()(const FontKey& key) const;
    };
    struct ReadyFont {
        FontId id = 0;
        FontMetrics metrics;
    };

    bool isUnderlined() const { return tags_.top().underline || counts_.underline > 0; }
    static int* counter(Counts& counts, TagType code);
    State fontState(const HTMLElement& tag) const;
    State shifted(bool up);
    const ReadyFont& readyFont(const FontKey& key);

    const HTMLDocument& document_;
    const LayoutDefaults& defaults_;
    Canvas& canvas_;
    Flow& flow_;
    TagStack<State> tags_;
    Counts counts_;
    std::vector<Counts> outerCounts_;
    std::unordered_map<FontKey, ReadyFont, HashFontKey> fonts_;
    std::uint32_t current_ = kNone;
};

}  // namespace kavrelon
