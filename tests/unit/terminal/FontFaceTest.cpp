#include <gtest/gtest.h>

#include <map>
#include <string>

#include "terminal/FontFace.h"

namespace kavrelon {
namespace {

constexpr FaceFacts kPlain{.charset = charsets::kAnsi, .hasLines = true};
constexpr FaceFacts kJoining{.hasLines = true, .linesFillCells = true};
constexpr FaceFacts kProportional{.fixedPitch = false, .hasLines = true, .linesFillCells = true};
constexpr FaceFacts kOemBitmap{.bitmaps = true, .charset = charsets::kOem};
constexpr FaceFacts kOemOutline{.charset = charsets::kOem};
constexpr FaceFacts kWithoutLines{};

/// A system with these faces; its own choice is another one.
class SomeFaces final : public InstalledFaces {
  public:
    explicit SomeFaces(std::map<std::string, FaceFacts> faces) : faces_(std::move(faces)) {}
    bool has(const char* name) override { return faces_.contains(name); }
    FaceFacts factsOf(const FontChoice& choice) override {
        return has(choice.name) ? faces_.at(choice.name) : FaceFacts{};
    }

  private:
    std::map<std::string, FaceFacts> faces_;
};

TEST(FontFaceTest, WhatStandsInForAFaceDependsOnWhatIsInstalled) {
    constexpr FontChoice kTerminal{"MS LineDraw", charsets::kDefault}, kText{"Arial", charsets::kOem};
    const struct {
        const char* what;
        std::map<std::string, FaceFacts> installed;
        FontChoice choice;
        std::string name;
        bool oemCodes, linesJoin;
    } cases[] = {
        {"a terminal's face is trusted", {{"MS LineDraw", kWithoutLines}}, kTerminal, "MS LineDraw", 1, 1},
        {"unless it shows its lines", {{"MS LineDraw", kPlain}}, kTerminal, "MS LineDraw", 0, 0},
        {"a text face is not", {{"Arial", kWithoutLines}}, kText, "Arial", 0, 0},
        {"proportional lines do not join", {{"Arial", kProportional}}, kText, "Arial", 0, 0},
        {"bitmaps with the characters join", {{"Arial", kOemBitmap}}, kText, "Arial", 1, 1},
        {"outlines with them need not", {{"Arial", kOemOutline}}, kText, "Arial", 1, 0},
        {"the chosen face goes first", {{"Arial", kPlain}, {"Consolas", kJoining}}, kText, "Arial", 0, 0},
        {"lines that join go before looks",
         {{"Consolas", kPlain}, {"Courier New", kJoining}, {"Liberation Mono", kJoining}},
         kTerminal,
         "Courier New",
         0,
         1},
        {"a stand-in is not trusted", {{"Consolas", kWithoutLines}}, kTerminal, "Consolas", 0, 0},
        {"looks, when no lines join",
         {{"DejaVu Sans Mono", kPlain}, {"Courier New", kPlain}},
         kTerminal,
         "Courier New",
         0,
         0},
        {"no known face", {{"Wingdings", kJoining}}, kTerminal, "", 0, 0},
    };
    for (const auto& c : cases) {
        SomeFaces faces(c.installed);
        const FontFace face = findFace(faces, c.choice);
        EXPECT_EQ(face.name, c.name) << c.what;
        EXPECT_EQ(face.oemCodes, c.oemCodes) << c.what;
        EXPECT_EQ(face.linesJoin, c.linesJoin) << c.what;
        EXPECT_EQ(face.charset, face.name == c.choice.name ? c.choice.charset : charsets::kDefault) << c.what;
    }
}

}  // namespace
}  // namespace kavrelon
