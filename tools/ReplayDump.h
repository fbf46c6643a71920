#pragma once

#include <string>

namespace kavrelon {

class HeadlessWindow;
class HostMenus;
class frmTerm;

/// The state of a terminal window as a JSON line: size, cursor, renditions, and every stored cell of the
/// screen with its attribute, in runs. `index` is the window's place on the stack.
std::string stateLine(const frmTerm& window, int index);

/// What the headless window shows in each cell, in runs.
std::string screenLine(const frmTerm& window, const HeadlessWindow& shown);

/// The two menus that the host fills.
std::string menusLine(const HostMenus& menus);

}  // namespace kavrelon
