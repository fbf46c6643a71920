#pragma once

#include <string>

namespace kavrelon {

// What the program tells its user outside its windows. It has no console of its own, so that none comes up
// with its window, and yet speaks where the user looks: to the standard streams that it was given, else to
// the console of the program that started it, else in a message box.

/// The name on message boxes.
inline constexpr const wchar_t* kProgramTitle = L"Kavrelon Sample Host";

/// From now on there are no message boxes: nobody may be there to close them.
void leaveOutMessageBoxes();

/// Tells what the user has asked for, on standard output.
void print(const std::string& text);
/// Tells what went wrong, on standard error.
void complain(const std::string& sentence);
/// The same for what is shown in a window already: never in a message box.
void complainQuietly(const std::string& sentence);

}  // namespace kavrelon
