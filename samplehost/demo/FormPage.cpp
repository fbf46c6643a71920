#include <array>
#include <string>

#include "samplehost/demo/DemoPages.h"

namespace kavrelon {

namespace {

using std::chrono::milliseconds;

struct FieldLayout {
    std::string_view label;
    int row;
    int column;
    int columns;
    /// What the page types when it is unattended.
    std::string_view sample;
};

constexpr std::array<FieldLayout, 6> kFields{{
    {"Name", 7, 22, 30, "Florence Ashdown"},
    {"Street", 9, 22, 30, "14 Harbour Lane"},
    {"Town", 11, 22, 20, "Eastbridge"},
    {"Code", 11, 54, 8, "EB4 7QT"},
    {"Article", 13, 22, 20, "Brass lantern"},
    {"Quantity", 13, 54, 8, "12"},
}};

constexpr int kLabelColumns = 10;
constexpr int kNoteRow = 17;
constexpr milliseconds kKeystroke{110};

class FormPage final : public DemoPage {
  public:
    std::string_view title() const override { return "A form"; }
    std::string_view summary() const override { return "Fields at their places: the cursor is addressed."; }
    std::string_view keys() const override { return "Enter, Up, Down: next field"; }
    milliseconds watchTime() const override { return std::chrono::seconds(14); }

    void start(const DemoScreen& screen, bool unattended) override {
        values_ = {};
        field_ = 0;
        typesItself_ = unattended;
        sinceKeystroke_ = {};
        TerminalWriter& out = screen.out;
        out.style({Ink::Cyan, Ink::Black, Look::Dim}).frame({8, 4, 64, 16}, FrameLines::Double);
        out.at(31, 4).style({Ink::White}).text(" Purchase order ");
        out.style({Ink::Cyan, Ink::Black, Look::Dim}).horizontalRule(10, 15, 60, FrameLines::Single);
        for (const FieldLayout& field : kFields) {
            out.at(field.column - kLabelColumns, field.row)
                .style({Ink::White, Ink::Black, Look::Dim})
                .text(field.label);
        }
        for (std::size_t field = 0; field < kFields.size(); ++field) drawField(out, field);
        placeCursor(out);
    }

    void advance(const DemoScreen& screen, milliseconds elapsed) override {
        if (!typesItself_) return;
        sinceKeystroke_ += elapsed;
        while (typesItself_ && sinceKeystroke_ >= kKeystroke) {
            sinceKeystroke_ -= kKeystroke;
            typeNext(screen.out);
        }
    }

    bool key(const DemoScreen& screen, char key) override {
        typesItself_ = false;
        if (key == demokey::kEnter || key == demokey::kDown) {
            moveTo(screen.out, (field_ + 1) % kFields.size());
        } else if (key == demokey::kUp) {
            moveTo(screen.out, (field_ + kFields.size() - 1) % kFields.size());
        } else if (key == demokey::kBackspace) {
            erase(screen.out);
        } else if (static_cast<unsigned char>(key) >= 32) {
            type(screen.out, key);
        } else {
            return false;
        }
        return true;
    }

  private:
    void drawField(TerminalWriter& out, std::size_t index) const {
        const FieldLayout& field = kFields[index];
        const bool current = index == field_;
        out.at(field.column, field.row);
        out.style({current ? Ink::Yellow : Ink::White, Ink::Black, Look::Underline});
        out.field(values_[index], field.columns);
    }

    void placeCursor(TerminalWriter& out) const {
        const FieldLayout& field = kFields[field_];
        out.at(field.column + static_cast<int>(values_[field_].size()), field.row);
        out.style({Ink::Yellow, Ink::Black, Look::Underline});
    }

    void moveTo(TerminalWriter& out, std::size_t field) {
        const std::size_t previous = field_;
        field_ = field;
        drawField(out, previous);
        drawField(out, field_);
        if (field_ == 0) showNote(out);
        placeCursor(out);
    }

    void type(TerminalWriter& out, char character) {
        std::string& value = values_[field_];
        if (static_cast<int>(value.size()) >= kFields[field_].columns - 1) return;
        value += character;
        out.repeat(character, 1);
    }

    void erase(TerminalWriter& out) {
        std::string& value = values_[field_];
        if (value.empty()) return;
        value.pop_back();
        out.text("\b \b");
    }

    void typeNext(TerminalWriter& out) {
        const std::string_view sample = kFields[field_].sample;
        const std::size_t typed = values_[field_].size();
        if (typed < sample.size()) {
            type(out, sample[typed]);
            return;
        }
        typesItself_ = field_ + 1 < kFields.size();
        moveTo(out, (field_ + 1) % kFields.size());
    }

    void showNote(TerminalWriter& out) const {
        std::size_t filled = 0;
        for (const std::string& value : values_) filled += value.empty() ? 0 : 1;
        const bool complete = filled == kFields.size();
        out.at(12, kNoteRow).style({complete ? Ink::Green : Ink::Yellow});
        out.field(complete ? "The order is complete." : "Some fields are still empty.", 50);
    }

    std::array<std::string, kFields.size()> values_;
    std::size_t field_ = 0;
    bool typesItself_ = false;
    milliseconds sinceKeystroke_{0};
};

}  // namespace

std::unique_ptr<DemoPage> makeFormPage() {
    return std::make_unique<FormPage>();
}

}  // namespace kavrelon
