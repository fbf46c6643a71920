#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavrelon {

class ProfileFile;

/// The strings of the function keys: 1 to 12 plain, 13 to 24 with Alt, 25 to 36 with Shift, 37 to 48 with
/// both.
class FunctionKeys {
  public:
    static constexpr int kKeys = 48;

    /// Sets keys 1 to 6 to their built-in strings, then takes keys 3 to 48 from the settings file.
    /// Keys 1 and 2 are not the user's to change. A file that cannot be read changes nothing.
    void LoadFunctionKeys(ProfileFile& profiles, const std::string& iniFile) noexcept;

    /// The translated string of a key, empty when it has none. Raises SubscriptOutOfRange outside 0 to 48.
    std::string FuncKey(std::int16_t KeyNo) const;

    /// Stores a key's string as it is. Numbers outside 1 to 48 are ignored.
    void set(int keyNumber, std::string_view value);

    /// The number that a key name stands for: "12" is 12, "A2" 14, "S2" 26, "AS2" and "SA2" 38.
    /// Raises TypeMismatch or Overflow when what follows the prefix is not a number of 16 bits.
    static int numberFromName(std::string_view name);

    /// Replaces "<cr>" and "<CR>" by a carriage return and "^nn" by the character of that decimal code.
    /// A "^" whose next two characters are no number is left out together with them.
    static std::string TranslateKeyString(std::string_view text);

  private:
    std::array<std::string, kKeys + 1> keys_;
};

}  // namespace kavrelon
