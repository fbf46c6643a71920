#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>
#include <utility>

#include "terminal/FontMenu.h"
#include "terminal/IniFile.h"
#include "tests/unit/Session.h"

namespace kavrelon {
namespace {

using namespace std::string_literals;

class SettingsTest : public testing::Test, protected Session {
  protected:
    SettingsTest() { parent->iniFile = path; }

    void write(const std::string& content) const { std::ofstream(path, std::ios::binary) << content; }
    std::string read(const std::string& section, const std::string& key, const std::string& fallback = {}) {
        std::string result;
        IniFile::ReadIni(profiles, path, section, key, result, fallback);
        return result;
    }

    ScratchFolder folder;
    std::string path = folder.file("settings.ini");
};

TEST_F(SettingsTest, ValuesAreReadByTheRulesOfTheFile) {
    const std::string long120(120, 'v');
    write(
        "stray=0\r\n; Misc=1\r\n[Other]\r\nKey=other\r\n\r\n[misc]\r\n  KEY  =  some value  \r\n"
        "Quoted=\"  padded  \"\r\nEmpty=\r\nDouble=a=b\r\nDouble=second\r\nLong=" +
        long120 + "\r\n[Misc]\r\nLate=1\r\nlast=no line end");
    const struct {
        std::string section, key, value;
    } cases[] = {
        {"Misc", "Key", "some value"},  {"MISC", "quoted", "padded  "}, {"Misc", "Empty", ""},
        {"Misc", "Missing", "default"}, {"Misc", "Double", "a=b"},      {"Misc", "Long", long120.substr(21)},
        {"Misc", "stray", "default"},   {"Other", "Key", "other"},      {"None", "Key", "default"},
    };
    for (const auto& c : cases) EXPECT_EQ(read(c.section, c.key, "default"), c.value) << c.key;
}

TEST_F(SettingsTest, DeletedValuesStayAsEmptyOnes) {
    write("[Misc]\r\nFuncKey3=abc\r\n[Printer]\r\nSpoolType=1\r\n");
    IniFile::DeleteIni(profiles, path, "Misc", "FuncKey3");
    EXPECT_EQ(read("Misc", "FuncKey3", "gone"), "");
    IniFile::DeleteIniAll(profiles, path, "Misc");
    EXPECT_EQ(read("Misc", "FuncKey3", "gone") + read("Printer", "SpoolType"), "gone1");
}

TEST_F(SettingsTest, FilesThatCannotBeReadOrWritten) {
    for (const std::string& file : {folder.file("missing.ini"), folder.file(""), ""s}) {
        std::string result = "before";
        EXPECT_EQ(errorOf([&] { IniFile::ReadIni(profiles, file, "Misc", "Key", result, "1"); }), 53);
        EXPECT_EQ(result, "1");
    }
    EXPECT_EQ(errorOf([this] { IniFile::WriteIni(profiles, folder.file(""), "Misc", "Key", "value"); }), 75);
}

TEST_F(SettingsTest, ChosenFontsAreStoredAndComeBack) {
    connect();
    std::set<std::string> fonts;
    for (int index = -1; index <= 10; ++index) {
        SCOPED_TRACE(index);
        form().mnuFontStyle_Click(static_cast<std::int16_t>(index));
        EXPECT_EQ(read("Misc", "FontStyle"), std::to_string(index));
        const int entry = window().checkedFontEntry();
        EXPECT_EQ(entry, index >= 1 && index <= 8 ? index : 1);
        const std::string font = window().font().name;
        const std::string caption = fontMenuEntry(entry).caption;
        EXPECT_EQ(font.substr(0, font.size() - 3), caption.substr(0, font.size() - 3));
        fonts.insert(font);
        connect();
        EXPECT_EQ(window().font().name, font);
    }
    EXPECT_EQ(fonts.size(), 8U);
}

TEST_F(SettingsTest, StoredValuesThatNoMenuWrote) {
    const struct {
        std::string fontStyle, spoolType;
        int fontEntry, printerEntry;
    } cases[] = {{" 7.5 ", "-1", 8, 0}, {"-32768", "01", 1, 0}, {"99", "x", 1, 0},
                 {"", "", 1, 0},        {"first", "0", 1, 0},   {"32768", "0", 1, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fontStyle);
        write("[Misc]\r\nFontStyle=" + c.fontStyle + "\r\n[Printer]\r\nSpoolType=" + c.spoolType + "\r\n");
        connect();
        EXPECT_EQ(window().checkedFontEntry(), c.fontEntry);
        EXPECT_EQ(window().checkedPrinterTypeEntry(), c.printerEntry);
    }
}

TEST_F(SettingsTest, TheChoiceForCarriageReturnsIsStoredAndComesBack) {
    connect();
    EXPECT_FALSE(form().CRtoCRLF());
    for (const bool on : {true, false}) {
        form().mnuFileCRtoCRLF_Click();
        EXPECT_EQ(read("Misc", "CRtoCRLF"), on ? "1" : "0");
        connect();
        EXPECT_EQ(form().CRtoCRLF(), on);
        EXPECT_EQ(window().CRtoCRLFChecked(), on);
    }
    write("");
    form().CRtoCRLF(true);
    form().ReadINIFile();
    EXPECT_TRUE(form().CRtoCRLF() && window().CRtoCRLFChecked()) << "the file has no say in it";
}

TEST_F(SettingsTest, UnusableFilesLeaveTheDefaults) {
    std::string binary = "[Misc]\r\nFontStyle=\xFF\x00\x1A\r\nFuncKey3=\r\n"s;
    for (int i = 0; i < 50000; ++i) binary += static_cast<char>(i * 7919 >> 3);
    for (const std::string& text :
         {""s, "["s, "="s, "]\n[\n=\n[Misc\nFontStyle"s, binary, std::string(2 << 20, 'x'), "unreadable"s}) {
        write(text);
        if (text == "unreadable") parent->iniFile = folder.file("");
        connect();
        EXPECT_EQ(window().checkedPrinterTypeEntry(), 0);
        EXPECT_EQ(terminal->FuncKey(3), "/MSG1\r");
    }
    EXPECT_EQ(window().checkedFontEntry(), 1);
    form().mnuFontStyle_Click(2);
    EXPECT_EQ(window().checkedFontEntry(), 2);
}

TEST_F(SettingsTest, FunctionKeysThreeToFortyEightComeFromTheFile) {
    write(
        "[Misc]\r\nFuncKey1=X\r\nFuncKey2=X\r\nFuncKey3=^27[A<cr>\r\nFuncKey4=\r\nFuncKey7=^9427\r\n"
        "FuncKey48=last\r\nFuncKey49=no\r\n");
    connect();
    const std::pair<std::int16_t, std::string> cases[] = {{1, "*\r"},   {2, "?\r"},  {3, "\x1B[A\r"},
                                                          {4, "/MR\r"}, {5, "/\r"},  {7, "\x1B"},
                                                          {8, ""},      {48, "last"}};
    for (const auto& [key, text] : cases) EXPECT_EQ(terminal->FuncKey(key), text) << key;
    sequence(rows::kSetFunctionKey, {"3", "changed"});
    EXPECT_EQ(read("Misc", "FuncKey3"), "^27[A<cr>");
    terminal->IClientMain_OnConnection();
    EXPECT_EQ(terminal->FuncKey(3), "\x1B[A\r");
}

}  // namespace
}  // namespace kavrelon
