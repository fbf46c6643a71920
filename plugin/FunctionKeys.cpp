#include "plugin/FunctionKeys.h"

#include <algorithm>

#include "support/AsciiText.h"
#include "support/Conversions.h"
#include "support/RuntimeError.h"
#include "terminal/IniFile.h"
#include "terminal/ProfileFile.h"
#include "terminal/Settings.h"

namespace kavrelon {
namespace {

constexpr int kFirstSettableKey = 3;

constexpr std::array<const char*, 6> kBuiltIn{"*\r", "?\r", "/MSG1\r", "/MR\r", "/\r", "/CAL\r"};

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

int numberAfter(std::string_view name, std::size_t prefix, int base) {
    const std::int16_t number = toInt16(name.substr(std::min(prefix, name.size())));
    return narrowToInt16(base + number);
}

}  // namespace

void FunctionKeys::LoadFunctionKeys(ProfileFile& profiles, const std::string& iniFile) noexcept {
    carryOn([this] { std::copy(kBuiltIn.begin(), kBuiltIn.end(), keys_.begin() + 1); });
    bool readable = false;
    carryOn([&] { readable = profiles.canRead(iniFile); });
    if (!readable) return;
    for (int key = kFirstSettableKey; key <= kKeys; ++key) {
        carryOn([&] {
            const std::string value = IniFile::storedValue(profiles, iniFile, settings::kMisc,
                                                           settings::kFuncKey + std::to_string(key), {});
            if (!value.empty()) keys_[static_cast<std::size_t>(key)] = TranslateKeyString(value);
        });
    }
}

std::string FunctionKeys::FuncKey(std::int16_t KeyNo) const {
    if (KeyNo < 0 || KeyNo > kKeys) raise(RuntimeErrorNumber::SubscriptOutOfRange);
    return TranslateKeyString(keys_[static_cast<std::size_t>(KeyNo)]);
}

void FunctionKeys::set(int keyNumber, std::string_view value) {
    if (keyNumber < 1 || keyNumber > kKeys) return;
    keys_[static_cast<std::size_t>(keyNumber)] = value;
}

int FunctionKeys::numberFromName(std::string_view name) {
    const auto contains = [name](std::string_view prefix) {
        return name.find(prefix) != std::string_view::npos;
    };
    if (contains("AS") || contains("SA")) return numberAfter(name, 2, 36);
    if (contains("S")) return numberAfter(name, 1, 24);
    if (contains("A")) return numberAfter(name, 1, 12);
    return toInt16(name);
}

std::string FunctionKeys::TranslateKeyString(std::string_view text) {
    std::string source(text);
    replaceAll(source, "<cr>", "\r");
    replaceAll(source, "<CR>", "\r");

    std::string result;
    for (std::size_t i = 0; i < source.size();) {
        if (source[i] != '^') {
            result += source[i++];
            continue;
        }
        const std::string code = source.substr(i + 1, 2);
        if (!code.empty() && std::all_of(code.begin(), code.end(), isAsciiDigit)) {
            result += static_cast<char>(toInt16(code));
        }
        i += 3;
    }
    return result;
}

}  // namespace kavrelon
