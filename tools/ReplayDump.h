#pragma once

#include <string>
#include <vector>

namespace kavrelon {

class HeadlessWindow;
class HelpBoxes;
class HostMenus;
class Pictures;
class frmTerm;
struct HeadlessDesktop;

/// The state of a terminal window as a JSON line: size, cursor, renditions, and every stored cell of the
/// screen with its attribute, in runs. `index` is the window's place on the stack.
std::string stateLine(const frmTerm& window, int index);

/// What the headless window shows in each cell, in runs.
std::string screenLine(const frmTerm& window, const HeadlessWindow& shown);

/// The help boxes by slot: their cells, their places in pixels, and what their labels show.
std::string boxesLine(const HelpBoxes& boxes, const HeadlessDesktop& desktop);

/// The pictures over the screen by number: the cells that they cover.
std::string picturesLine(const Pictures& pictures);

/// The lines of the settings file.
std::string settingsLine(const std::vector<std::string>& lines);

/// The two menus that the host fills.
std::string menusLine(const HostMenus& menus);

}  // namespace kavrelon
