// Whatever a settings file holds: reading it fails in no unknown way, what is stored is read back and changes
// nothing else, and the terminal comes up with a font, a printing method and its two fixed keys.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Input.h"
#include "headless/HeadlessSession.h"
#include "plugin/FunctionKeys.h"
#include "support/Bytes.h"
#include "support/RuntimeError.h"
#include "terminal/FontFace.h"
#include "terminal/FontMenu.h"
#include "terminal/IniFile.h"
#include "terminal/PrinterType.h"

namespace {

using namespace kavrelon;
using fuzz::FuzzInput;
using fuzz::require;

/// The settings file of this process, which is gone after it.
class ScratchFile {
  public:
    ScratchFile() : path_(std::filesystem::temp_directory_path() / name()) {}
    ~ScratchFile() { std::filesystem::remove(path_); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    std::string path() const { return path_.string(); }
    void hold(fuzz::Bytes content) const { std::ofstream(path_, std::ios::binary) << textOf(content); }

  private:
    static std::string name() { return "kavrelon-fuzz-" + std::to_string(std::random_device()()) + ".ini"; }

    std::filesystem::path path_;
};

/// A key, as somebody might write or read it.
struct Place {
    explicit Place(FuzzInput& input) {
        constexpr const char* kSections[] = {"Misc", "Printer", "MISC", "a b"};
        constexpr const char* kKeys[] = {"FontStyle", "SpoolType", "PrinterName",
                                         "FuncKey3",  "funckey48", "x"};
        section = kSections[input.below(std::size(kSections))];
        key = kKeys[input.below(std::size(kKeys))];
    }
    std::string section;
    std::string key;
};

/// Whether a value is read back as it was written: one line, without blanks or quotes around it, and not too
/// long.
bool comesBack(const std::string& value) {
    constexpr std::size_t kMost = 99;
    const auto isOuter = [](char c) { return c == ' ' || c == '\t' || c == '"' || c == '\''; };
    if (value.find_first_of("\r\n") != value.npos || value.size() > kMost) return false;
    return value.empty() || !(isOuter(value.front()) || isOuter(value.back()));
}

class SettingsCheck {
  public:
    SettingsCheck(const std::string& path, FuzzInput& input) : path_(path), input_(input) {}

    void run() {
        for (int step = 0; step < 8 && !input_.empty(); ++step) change();
        checkKeys();
        checkTerminal();
    }

  private:
    std::string read(const Place& place) {
        std::string value = "?";
        IniFile::ReadIni(profiles_, path_, place.section, place.key, value, "none");
        require(value.size() <= 99, "a value has at most 99 characters");
        return value;
    }

    void change() {
        const Place place(input_);
        const Place other(input_);
        const std::string before = read(other);
        const int what = input_.below(3);
        const std::string value = input_.text();
        if (what == 2) return IniFile::DeleteIniAll(profiles_, path_, place.section);
        if (what == 1) {
            IniFile::DeleteIni(profiles_, path_, place.section, place.key);
            require(read(place).empty(), "a deleted value is empty");
        } else {
            IniFile::WriteIni(profiles_, path_, place.section, place.key, value);
            if (!comesBack(value)) return;
            require(read(place) == value, "what is stored is read back");
        }
        if (place.key != other.key) require(read(other) == before, "other values stay");
    }

    void checkKeys() {
        FunctionKeys keys;
        keys.LoadFunctionKeys(profiles_, path_);
        require(keys.FuncKey(1) == "*\r" && keys.FuncKey(2) == "?\r", "two keys are fixed");
        const std::string text = input_.text();
        require(FunctionKeys::TranslateKeyString(text).size() <= text.size(), "a key's string only shrinks");
        try {
            keys.set(FunctionKeys::numberFromName(text), text);
        } catch (const RuntimeError&) {  // NOLINT(bugprone-empty-catch): no number
        }
    }

    void checkTerminal() {
        HeadlessSession session;
        session.parent->iniFile = path_;
        session.platform.headlessPrinters.installed = {"one", "two"};
        session.platform.headlessPrinters.defaultPrinter = "one";
        session.connect();
        const int font = session.window().checkedFontEntry();
        require(font >= kFirstFontEntry && font < kFirstFontEntry + kFontEntries, "a font is chosen");
        const int type = session.window().checkedPrinterTypeEntry();
        require(type >= 0 && type < static_cast<int>(kSpoolTypes.size()), "a printing method is chosen");
        session.form().mnuPrinter_Click(static_cast<std::int16_t>(input_.below(4)));
        const PrinterMenu printers = session.form().printerMenu();
        require(std::ranges::count(printers.entries(), true, &PrinterMenu::Entry::checked) == 1,
                "one printer is in use");
        session.form().mnuFilePrint_Click();
        require(session.platform.headlessPrinters.printedOn == printers.printerInUse(),
                "it prints on that one");
        session.form().mnuFontStyle_Click(input_.number());
        session.form().mnuPrinterType_Click(input_.number());
    }

    TextProfileFile profiles_;
    std::string path_;
    FuzzInput& input_;
};

/// Faces of which the input tells.
class SomeFaces final : public InstalledFaces {
  public:
    explicit SomeFaces(FuzzInput& input) : input_(input) {}
    bool has(const char*) override { return input_.flag(); }
    FaceFacts factsOf(const FontChoice&) override {
        return {input_.flag(), input_.flag(), input_.byte(), input_.flag(), input_.flag()};
    }

  private:
    FuzzInput& input_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile file;
    FuzzInput input({data, size});
    SomeFaces faces(input);
    const FontChoice& asked = fontMenuEntry(fontEntryFor(input.number())).font;
    const FontFace found = findFace(faces, asked);
    require(!found.linesJoin || found.fixedPitch, "lines join only where all characters are as wide");
    file.hold(bytesOf(input.text()));
    SettingsCheck(file.path(), input).run();
    return 0;
}
